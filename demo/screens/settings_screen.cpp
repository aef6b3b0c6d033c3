#include "screens/settings_screen.h"

#include "host/placeholder.h"
#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr RECT kLanguage{24, 104, 424, 152};
constexpr RECT kRegion{24, 376, 424, 424};  // 56 pixels above the screen's bottom: opens upward
constexpr RECT kLanguageReadout{456, 104, 776, 152};
constexpr RECT kRegionReadout{456, 376, 776, 424};

struct Section {
    const wchar_t* text;
    RECT box;
};
constexpr Section kSections[] = {
    {L"DISPLAY LANGUAGE", {24, 76, 424, 100}},
    {L"RADIO REGION", {24, 348, 424, 372}},
};

const wchar_t* const kLanguages[] = {L"English", L"Deutsch", L"Fran\u00E7ais", L"Espa\u00F1ol", L"Italiano",
                                     L"Nederlands", L"Polski", L"Portugu\u00EAs", L"Svenska", L"T\u00FCrk\u00E7e"};
const wchar_t* const kRegions[] = {L"Europe", L"North America", L"Japan", L"Australia",
                                   L"Middle East and North Africa, long wave included"};

CString SkinList(const SkinSource& skin, std::initializer_list<const char*> pieces) {
    CString list;
    for (const char* piece : pieces) list += CString(skin.Path(piece).c_str()) + L"|";
    return list;
}

std::wstring Chosen(const CZELComBox& box) {
    CString text;
    box.GetLBText(box.GetCurSel(), text);
    return std::wstring(text.GetString());
}

}  // namespace

bool SettingsScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    return BuildLanguage(skin) && BuildRegion(skin);
}

bool SettingsScreen::BuildLanguage(const SkinSource& skin) {
    if (!language_.Create(WS_CHILD | WS_VISIBLE, kLanguage, CWnd::FromHandle(host_), kLanguageId)) return false;
    language_.LoadBitmapW(IDB_COMBO_LEFT, IDB_COMBO_MIDDLE, IDB_COMBO_RIGHT, IDB_COMBO_ARROW, IDB_COMBO_ARROW_PRESSED,
                          IDB_COMBO_ROW, IDB_COMBO_ROW_SELECTED, skin.module);
    language_.LoadScrollBitmap(IDB_SCROLL_THUMB, IDB_SCROLL_THUMB_PRESSED, IDB_SCROLL_TRACK, IDB_SCROLL_UP,
                               IDB_SCROLL_DOWN, IDB_SCROLL_DOWN_PRESSED, IDB_SCROLL_UP_PRESSED, skin.module);
    for (const wchar_t* language : kLanguages) language_.AddString(language);
    language_.SetCurSel(0);
    language_.SetTextColor(kText, RGB(255, 255, 255));
    language_.SetFontHeight(20);
    return true;
}

// A plain child taken over, as a dialog takes over its template's items; five regions fit
// the five rows, so this list shows no scroll bar.
bool SettingsScreen::BuildRegion(const SkinSource& skin) {
    HWND plain = CreatePlaceholder(host_, kRegionId, kRegion, L"");
    if (!plain || !region_.SubclassWindow(plain)) return false;
    region_.LoadSkin(SkinList(skin, {"combo_left", "combo_middle", "combo_right", "combo_arrow", "combo_arrow_pressed",
                                     "combo_row", "combo_row_selected", "scroll_up", "scroll_up_pressed",
                                     "scroll_track", "scroll_thumb", "scroll_thumb_pressed", "scroll_down",
                                     "scroll_down_pressed"}),
                     L"");
    for (const wchar_t* region : kRegions) region_.AddString(region);
    region_.SetCurSel(0);
    region_.SetTextColor(kText, RGB(255, 255, 255));
    region_.SetFontHeight(20);
    return true;
}

void SettingsScreen::Heard(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_COMMAND || HIWORD(wParam) != CBN_SELCHANGE) return;
    if (LOWORD(wParam) == kLanguageId) ContentChanged(host_, kLanguageReadout);
    if (LOWORD(wParam) == kRegionId) ContentChanged(host_, kRegionReadout);
}

void SettingsScreen::Paint(HDC frame) {
    for (const Section& s : kSections) DrawLabel(frame, s.text, s.box, sectionFont_, kTextDim);
    const UINT format = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS;
    DrawLabel(frame, L"Menus in " + Chosen(language_), kLanguageReadout, textFont_, kAccentLight, format);
    DrawLabel(frame, L"Tuned for " + Chosen(region_), kRegionReadout, textFont_, kAccentLight, format);
}

}  // namespace zel::demo
