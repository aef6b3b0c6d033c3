# Public headers of the scroll bar and the slider (see controls/CMakeLists.txt).
zel_controls_public_headers(CZELScrollbar.h CZELSlider.h)
