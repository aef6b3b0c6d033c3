// CImageRadioBox: an exported window class with no behaviour of its own yet.
#pragma once

#include <afxwin.h>

#include "zelctl_api.h"

class ZELCTL_API CImageRadioBox : public CWnd {
public:
    CImageRadioBox();
    ~CImageRadioBox() override;

protected:
    DECLARE_MESSAGE_MAP()

    DWORD m_dwReserved;
};
