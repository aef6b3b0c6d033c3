// The platform's own extensions beside the Win32 names.
#pragma once

#include <windows.h>

#include "zel/debug.h"
#include "zel/desktop.h"
#include "zel/gdi_extras.h"
#include "zel/hooks.h"
#include "zel/resources.h"
