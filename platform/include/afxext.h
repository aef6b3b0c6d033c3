// Framework extensions; everything they need comes with afxwin.h.
#pragma once

#include "afxwin.h"
