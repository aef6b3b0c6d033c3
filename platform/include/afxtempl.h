// Collection templates: CArray.
#pragma once

#include "zel/mfc/carray.h"
