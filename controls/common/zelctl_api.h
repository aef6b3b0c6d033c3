// Marks the classes libzelctl.so exports; everything else in the library is hidden.
#pragma once

#define ZELCTL_API __attribute__((visibility("default")))

// Keeps a member of an exported class out of the export list (members whose signatures
// name internal types).
#define ZELCTL_HIDDEN __attribute__((visibility("hidden")))
