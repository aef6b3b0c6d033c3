// The platform's own extensions beside the Win32 names.
#pragma once

#include <windows.h>

#include "zel/gdi_extras.h"
