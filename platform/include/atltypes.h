// CPoint, CSize and CRect.
#pragma once

#include "zel/mfc/geometry.h"
