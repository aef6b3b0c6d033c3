// Collection templates: CArray, CList and CMap.
#pragma once

#include "zel/mfc/carray.h"
#include "zel/mfc/clist.h"
