// Calendar arithmetic shared by the date controls.
#pragma once

#include <windows.h>

namespace zelctl {

// Days of `month` in `year` by the Gregorian rule; any month outside 1..12 (0 included)
// counts 30 days, so a stray month still gives a usable range.
UINT DaysInMonth(UINT year, UINT month);

}  // namespace zelctl
