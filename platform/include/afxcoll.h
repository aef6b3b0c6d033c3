// Collections: CStringArray and the arrays of plain values.
#pragma once

#include "zel/mfc/collections.h"
