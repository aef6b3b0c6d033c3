// A small host as an application would write it: a dialog-like window whose items exist
// as plain windows first (as a dialog template makes them) and are then subclassed into
// a CWnd subclass and a CButton subclass; the host then hears from both.
#include "window_fixture.h"

namespace {

using mfc_test::Note;
using SampleHost = mfc_test::WindowTest;

constexpr int kButtonId = 100, kPadId = 101;
constexpr UINT kPadTapped = 1;  // the pad's own notification code
constexpr COLORREF kFace = RGB(0, 0, 200), kPressed = RGB(200, 0, 0), kPadColour = RGB(0, 160, 0);

class CSkinButton : public CButton {
public:
    void DrawItem(LPDRAWITEMSTRUCT dis) override {
        CDC* dc = CDC::FromHandle(dis->hDC);
        bool pressed = (dis->itemState & ODS_SELECTED) != 0;
        dc->FillSolidRect(&dis->rcItem, pressed ? kPressed : kFace);
        Note(std::string("button:draw") + (pressed ? "+pressed" : "") + (dis->itemState & ODS_FOCUS ? "+focus" : ""));
    }
};

class CTouchPad : public CWnd {
protected:
    afx_msg void OnPaint() {
        CPaintDC dc(this);
        CRect rc;
        GetClientRect(&rc);
        dc.FillSolidRect(&rc, kPadColour);
    }
    afx_msg void OnLButtonDown(UINT, CPoint point) {
        Note("pad:down(" + std::to_string(point.x) + "," + std::to_string(point.y) + ")");
        SetCapture();
    }
    afx_msg void OnLButtonUp(UINT, CPoint) {
        Note("pad:up");
        ReleaseCapture();
        GetParent()->SendMessage(WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), kPadTapped),
                                 reinterpret_cast<LPARAM>(m_hWnd));
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTouchPad, CWnd)
    ON_WM_PAINT()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

class CSampleDialog : public CWnd {
public:
    CSkinButton m_button;
    CTouchPad m_pad;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT cs) {
        if (CWnd::OnCreate(cs) == -1) return -1;
        CreateWindowExW(0, L"BUTTON", L"Play", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 10, 10, 60, 30, m_hWnd,
                        reinterpret_cast<HMENU>(kButtonId), nullptr, nullptr);
        mfc_test::RawWindow(m_hWnd, kPadId, RECT{100, 10, 180, 60});
        if (!m_button.SubclassDlgItem(kButtonId, this) || !m_pad.SubclassDlgItem(kPadId, this)) return -1;
        return 0;
    }
    afx_msg void OnPlay() { Note("dialog:BN_CLICKED"); }
    afx_msg void OnPad() { Note("dialog:pad tapped"); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CSampleDialog, CWnd)
    ON_WM_CREATE()
    ON_BN_CLICKED(kButtonId, &CSampleDialog::OnPlay)
    ON_CONTROL(kPadTapped, kPadId, &CSampleDialog::OnPad)
END_MESSAGE_MAP()

TEST_F(SampleHost, SubclassedItemsPaintAndReportToTheHost) {
    CSampleDialog dialog;
    ASSERT_TRUE(dialog.CreateEx(0, nullptr, L"Sample", WS_POPUP | WS_VISIBLE, 50, 50, 300, 200, nullptr, nullptr));
    Desk().RunUntilIdle();
    EXPECT_EQ(mfc_test::Joined(), "button:draw");
    // Screen pixels: the button's face inside, the pad, and what lies outside them untouched.
    EXPECT_EQ(Desk().Pixel(60, 60), kFace);
    EXPECT_EQ(Desk().Pixel(119, 69), kFace);
    EXPECT_NE(Desk().Pixel(120, 60), kFace);
    EXPECT_EQ(Desk().Pixel(150, 60), kPadColour);
    EXPECT_EQ(Desk().Pixel(229, 109), kPadColour);
    EXPECT_NE(Desk().Pixel(230, 110), kPadColour);

    mfc_test::Log().clear();
    Desk().PointerDown(70, 70);
    EXPECT_EQ(Desk().Pixel(70, 70), kPressed);
    Desk().PointerUp(70, 70);
    EXPECT_EQ(Desk().Pixel(70, 70), kFace);
    EXPECT_EQ(mfc_test::Joined(),
              "button:draw+focus button:draw+pressed+focus button:draw+focus dialog:BN_CLICKED");

    mfc_test::Log().clear();
    Desk().Tap(155, 65);
    EXPECT_EQ(mfc_test::Joined(), "pad:down(5,5) pad:up dialog:pad tapped");

    HWND button = dialog.m_button.m_hWnd;
    dialog.DestroyWindow();
    EXPECT_EQ(dialog.m_button.m_hWnd, nullptr) << "destroying the host unbinds every item";
    EXPECT_EQ(dialog.m_pad.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(button), nullptr);
}

}  // namespace
