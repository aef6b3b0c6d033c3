# Public headers of the buttons and check boxes (see controls/CMakeLists.txt).
zel_controls_public_headers(CZELButton.h CZELBmpButton.h CBmpTextButton.h CZELChkBox.h CImageRadioBox.h)
