// One include for every control of the library.
#pragma once

#include "CSkinWnd.h"
#include "CZELScrollbar.h"
#include "CZELSlider.h"
