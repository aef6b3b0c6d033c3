# Public headers of the date and time controls (see controls/CMakeLists.txt).
zel_controls_public_headers(CDataTimectrl.h CTimeData.h CZELDate.h CZELTimeDate.h)
