// Common controls support.
#pragma once

#include <commctrl.h>

#include "afxwin.h"
