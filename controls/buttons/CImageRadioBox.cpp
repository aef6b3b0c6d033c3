#include "CImageRadioBox.h"

// An empty map leaves the map macros' class alias unused.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-local-typedefs"
BEGIN_MESSAGE_MAP(CImageRadioBox, CWnd)
END_MESSAGE_MAP()
#pragma GCC diagnostic pop

CImageRadioBox::CImageRadioBox() : m_dwReserved(0) {}

CImageRadioBox::~CImageRadioBox() = default;
