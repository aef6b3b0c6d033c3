// Marks the classes libzelctl.so exports; everything else in the library is hidden.
#pragma once

#define ZELCTL_API __attribute__((visibility("default")))
