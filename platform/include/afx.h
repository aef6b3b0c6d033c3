// The framework's core: CObject, CString, CTime, the geometry classes and the arrays.
#pragma once

#include <windows.h>

#include "zel/mfc/object.h"
#include "zel/mfc/cstring.h"
#include "zel/mfc/ctime.h"
#include "zel/mfc/geometry.h"
#include "afxcoll.h"
