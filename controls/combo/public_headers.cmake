# Public headers of the combo box (see controls/CMakeLists.txt).
zel_controls_public_headers(CZELComBox.h)
