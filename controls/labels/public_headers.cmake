# Public headers of the labels and displays (see controls/CMakeLists.txt).
zel_controls_public_headers(CZELLable.h CZELTelLCD.h CZELBkLable.h CZELStatic.h)
