// USER: windows, messages, input, timers and the system classes.
#pragma once

#include "zel/win/types.h"
#include "zel/win/user_gdi.h"
