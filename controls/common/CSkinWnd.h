// The common skinned-window base: a CWnd with one operation every skinned control
// provides, loading its skin from a "|"-separated list of image paths.
#pragma once

#include <afxwin.h>

#include "zelctl_api.h"

class ZELCTL_API CSkinWnd : public CWnd {
public:
    CSkinWnd() = default;
    ~CSkinWnd() override = default;

    // strSkin lists image paths, each followed by "|"; strReserved is not used.
    virtual void LoadSkin(CString strSkin, CString strReserved) = 0;
};
