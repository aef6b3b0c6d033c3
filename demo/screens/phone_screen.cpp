#include "screens/phone_screen.h"

#include <aygshell.h>

#include <cstdio>

#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr wchar_t kPadKeys[PhoneScreen::kKeys] = {L'1', L'2', L'3', L'4', L'5', L'6',
                                                  L'7', L'8', L'9', L'*', L'0', L'#'};
constexpr const char* kPadSkins[PhoneScreen::kKeys] = {"key1", "key2", "key3", "key4", "key5",   "key6",
                                                       "key7", "key8", "key9", "keystar", "key0", "keyhash"};
constexpr int kKeyW = 78, kKeyH = 76, kPadLeft = 24, kPadTop = 72, kPadStepX = 88, kPadStepY = 84;

constexpr RECT kDisplay{310, 72, 776, 152};
constexpr RECT kCaption{310, 166, 776, 206};
constexpr RECT kPortrait{310, 228, 406, 324};
constexpr RECT kLastCallHeading{422, 232, 776, 252};
constexpr RECT kLastName{422, 256, 776, 284};
constexpr RECT kLastNumber{422, 286, 776, 310};

constexpr COLORREF kInk = RGB(24, 40, 28);  // the display's glass ink

CString SkinFile(const SkinSource& skin, const std::string& piece) { return CString(skin.Path(piece.c_str()).c_str()); }

RECT KeyRect(int i) {
    const int x = kPadLeft + (i % 3) * kPadStepX, y = kPadTop + (i / 3) * kPadStepY;
    return RECT{x, y, x + kKeyW, y + kKeyH};
}

}  // namespace

// The host window, and with it every control, is gone before the screen: the portrait the
// STATIC showed can go now.
PhoneScreen::~PhoneScreen() {
    if (portraitArt_) DeleteObject(portraitArt_);
}

bool PhoneScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    return BuildPad(skin) && BuildDisplay(skin) && BuildLastCall(skin);
}

bool PhoneScreen::BuildPad(const SkinSource& skin) {
    CWnd* parent = CWnd::FromHandle(host_);
    for (int i = 0; i < kKeys; ++i) {
        if (!keys_[i].Create(L"", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, KeyRect(i), parent, kFirstKeyId + i, false))
            return false;
        const std::string name = std::string("button_") + kPadSkins[i];
        const CString normal = SkinFile(skin, name + "_normal");
        keys_[i].LoadBitmaps(normal, SkinFile(skin, name + "_focus"), SkinFile(skin, name + "_pressed"), normal);
    }
    return true;
}

// The display's skin comes from files, its fonts and colours with it: the number starts
// at 44 pixels and shrinks from there.
bool PhoneScreen::BuildDisplay(const SkinSource& skin) {
    CWnd* parent = CWnd::FromHandle(host_);
    if (!display_.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kDisplay, parent, kDisplayId)) return false;
    CArray<CString, CString> frame, indicators;
    for (const char* piece : {"lcd_left", "lcd_middle", "lcd_right"}) frame.Add(SkinFile(skin, piece));
    for (const char* piece : {"lcd_signal", "lcd_battery"}) indicators.Add(SkinFile(skin, piece));
    DWORD colors[3] = {kInk, kInk, 0};
    int heights[3] = {44, 15, 0};
    display_.InitCtrl(frame, indicators, colors, heights, 1);
    CString status = L"Ready";
    display_.SetszTime(status);

    if (!caption_.Create(nullptr, L"Tap the keys to dial", WS_CHILD | WS_VISIBLE, kCaption, parent, kCaptionId))
        return false;
    caption_.LoadSkin(SkinFile(skin, "label_left") + L"|" + SkinFile(skin, "label_middle") + L"|" +
                          SkinFile(skin, "label_right") + L"|",
                      L"");
    const int w = kCaption.right - kCaption.left, h = kCaption.bottom - kCaption.top;
    caption_.SetFont(24, kText, DT_SINGLELINE | DT_VCENTER | DT_CENTER, CRect(14, 0, w - 14, h));
    return true;
}

// The portrait is a STATIC picture; the labels show the screen's background under them.
bool PhoneScreen::BuildLastCall(const SkinSource& skin) {
    CWnd* parent = CWnd::FromHandle(host_);
    if (!portrait_.Create(L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP, kPortrait, parent, kPortraitId))
        return false;
    const std::string portraitPath = skin.Path("portrait");
    const CString path(portraitPath.c_str());
    portraitArt_ = SHLoadDIBitmap(path);
    portrait_.SetBitmap(portraitArt_);

    background_ = skin.background;  // the host's own: not loaded again for each show
    if (!lastName_.Create(nullptr, L"Office, reception", WS_CHILD | WS_VISIBLE, kLastName, parent, kLastNameId) ||
        !lastNumber_.Create(nullptr, L"0049 89 4711 0815  \u00B7  yesterday 14:02", WS_CHILD | WS_VISIBLE, kLastNumber,
                            parent, kLastNumberId))
        return false;
    lastName_.SetFont(22, kText, DT_SINGLELINE | DT_VCENTER, CRect());
    lastNumber_.SetFont(17, kTextDim, DT_SINGLELINE | DT_VCENTER, CRect());
    lastName_.SetBitmap(background_);
    lastNumber_.SetBitmap(background_);
    return true;
}

void PhoneScreen::Dial(wchar_t key) {
    if (number_.GetLength() >= kMaxDigits) return;
    number_ += key;
    display_.SetWindowText(number_);
    display_.Invalidate();
    CString status;
    status.Format(L"%d digits", number_.GetLength());
    display_.SetszTime(status);
    caption_.SetWindowText(L"Call " + number_);
    caption_.Invalidate();
}

void PhoneScreen::Heard(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_COMMAND || HIWORD(wParam) != BN_CLICKED) return;
    const int key = LOWORD(wParam) - kFirstKeyId;
    if (key >= 0 && key < kKeys) Dial(kPadKeys[key]);
}

void PhoneScreen::Paint(HDC frame) { DrawLabel(frame, L"LAST CALL", kLastCallHeading, sectionFont_, kTextDim); }

}  // namespace zel::demo
