// The portable Win32 subset: include this as on Windows.
#pragma once

#include "zel/win/types.h"
#include "wingdi.h"
#include "winuser.h"
#include "winbase.h"
#include "aygshell.h"
