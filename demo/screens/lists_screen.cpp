#include "screens/lists_screen.h"

#include <commctrl.h>

#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr RECT kNames{16, 88, 392, 240};
constexpr RECT kDevices{408, 88, 784, 240};
constexpr RECT kTracks{16, 268, 392, 420};
constexpr RECT kPlaylist{408, 268, 784, 420};
constexpr RECT kChosen{16, 422, 784, 442};

struct Section {
    const wchar_t* text;
    RECT box;
};
constexpr Section kSections[] = {
    {L"NAME LIST  \u00B7  STYLE 1", {16, 62, 392, 86}},
    {L"NAME AND STATE  \u00B7  STYLE 2", {408, 62, 784, 86}},
    {L"NUMBERED  \u00B7  STYLE 3", {16, 242, 392, 266}},
    {L"IMAGES, PLAY LAYOUT  \u00B7  STYLE 0", {408, 242, 784, 266}},
};

constexpr const wchar_t* kPeople[] = {L"Ada Lovelace", L"Alan Turing", L"Barbara Liskov", L"Claude Shannon",
                                      L"Donald Knuth", L"Edsger Dijkstra", L"Frances Allen", L"Grace Hopper",
                                      L"John von Neumann and the rest of the Institute", L"Ken Thompson",
                                      L"Margaret Hamilton", L"Niklaus Wirth"};

CString File(const SkinSource& skin, const char* piece) { return CString(skin.Path(piece).c_str()); }

CArray<CString, CString>& Row(std::initializer_list<const wchar_t*> texts) {
    static CArray<CString, CString> row;
    row.RemoveAll();
    for (const wchar_t* t : texts) row.Add(t);
    return row;
}

}  // namespace

bool ListsScreen::Make(CZELList& list, const RECT& place, int id, int style, const SkinSource& skin) {
    if (!list.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, CWnd::FromHandle(host_), id)) return false;
    list.LoadScrollBitmap(IDB_SCROLL_THUMB, IDB_SCROLL_THUMB_PRESSED, IDB_SCROLL_TRACK, IDB_SCROLL_UP, IDB_SCROLL_DOWN,
                          IDB_SCROLL_DOWN_PRESSED, IDB_SCROLL_UP_PRESSED, skin.module);
    const UINT normal[3] = {IDB_LIST_LEFT, IDB_LIST_MIDDLE, IDB_LIST_RIGHT};
    const UINT selected[3] = {IDB_LIST_LEFT_SEL, IDB_LIST_MIDDLE_SEL, IDB_LIST_RIGHT_SEL};
    const UINT marks[2] = {IDB_LIST_MARK, IDB_LIST_MARK_SEL};
    list.LoadNomalBmp(normal, IDB_LIST_SEPARATOR, skin.module);
    list.LoadSelectBmp(selected, marks, skin.module);
    list.LoadBkBitmap(File(skin, "list_panel"));
    int fonts[4] = {18, 18, 14, 14};
    COLORREF colours[2] = {kText, RGB(255, 255, 255)};
    list.SetFontSizeAndClr(fonts, colours);
    if (style) list.SetSytle(style);
    return true;
}

bool ListsScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    if (!Make(names_, kNames, kNamesId, 1, skin) || !Make(devices_, kDevices, kDevicesId, 2, skin) ||
        !Make(tracks_, kTracks, kTracksId, 3, skin) || !Make(playlist_, kPlaylist, kPlaylistId, 0, skin))
        return false;
    FillNames();
    FillDevices();
    FillTracks(skin);
    FillPlaylist(skin);
    return true;
}

// Rows 36 pixels apart: 34-pixel pieces and the 2-pixel separator; the panel's corners
// are rounded by the row interval.
void ListsScreen::FillNames() {
    names_.SetInterval(12, 8, 4);
    names_.SetItemHeight(36);
    for (const wchar_t* person : kPeople) names_.InsertItem(names_.GetItemCount(), person);
}

void ListsScreen::FillDevices() {
    devices_.SetInterval(10, 10, 4);
    devices_.SetItemHeight(36);
    const std::pair<const wchar_t*, const wchar_t*> devices[] = {
        {L"Car kit", L"paired"}, {L"Headset", L"paired"}, {L"Phone of Grace", L"in range"},
        {L"Speaker in the kitchen", L"in range"}, {L"Watch", L"off"}, {L"Tablet", L"off"}};
    for (const auto& [name, state] : devices) {
        const int row = devices_.AddItem(Row({name, state}), 0);
        if (std::wstring(state) == L"paired") devices_.SetItemState(row, 2, 0);
    }
    devices_.SetSelectionMark(-1);  // the first row's automatic mark is not wanted here
    devices_.SetItemState(0, 2, 0);
    devices_.SetItemState(1, 2, 0);
}

void ListsScreen::FillTracks(const SkinSource& skin) {
    tracks_.LoadBitmapW(File(skin, "list3_left"), File(skin, "list3_middle"), File(skin, "list3_right"),
                        File(skin, "list_separator"));
    tracks_.LoadSelBitmaps(File(skin, "list3_left_sel"), File(skin, "list3_middle_sel"), File(skin, "list3_right_sel"),
                           File(skin, "list_mark"), File(skin, "list_mark_sel"));
    tracks_.LoadBitBmp2(File(skin, "list_badge"), File(skin, "list_badge_sel"));
    int fonts[4] = {15, 18, 13, 15};
    COLORREF colours[2] = {kText, RGB(255, 255, 255)};
    tracks_.SetFontSizeAndClr(fonts, colours);
    tracks_.SetInterval(6, 10, 4);
    tracks_.SetItemHeight(48);
    const wchar_t* tracks[][3] = {{L"Morning Light", L"The Harbour Trio", L"3:41"},
                                  {L"A Very Long Song Title That Keeps Going", L"Orchestra of the Valley", L"12:07"},
                                  {L"Static", L"Low Frequencies", L"4:02"},
                                  {L"Northbound", L"The Harbour Trio", L"5:15"},
                                  {L"Glass", L"Mira K.", L"2:58"}};
    for (const auto& t : tracks) tracks_.AddItem(Row({t[0], t[1], t[2]}), 0);
}

// The play layout: the name, a short time column and a hidden one; rows alternate between
// the two image entries.
void ListsScreen::FillPlaylist(const SkinSource& skin) {
    const CString plain[3] = {File(skin, "list_left"), File(skin, "list_middle"), File(skin, "list_right")};
    const CString alt[3] = {File(skin, "list_alt_left"), File(skin, "list_alt_middle"), File(skin, "list_alt_right")};
    const CString sel[3] = {File(skin, "list_left_sel"), File(skin, "list_middle_sel"), File(skin, "list_right_sel")};
    playlist_.AddImage(plain, sel);
    playlist_.AddImage(alt, sel);
    playlist_.LoadClrBitmap(File(skin, "list_back"));
    playlist_.SetPlayStyle(1);
    playlist_.SetInterval(2, 8, 4);
    playlist_.SetItemHeight(36);
    const std::pair<const wchar_t*, const wchar_t*> songs[] = {
        {L"Intro", L"0:52"}, {L"Harbour Lights", L"4:10"}, {L"Paper Planes over the Old Town", L"3:33"},
        {L"Interlude", L"1:05"}, {L"Night Drive", L"6:21"}, {L"Coda", L"2:12"}};
    int i = 0;
    for (const auto& [title, time] : songs) playlist_.AddItem(Row({title, time, L""}), i++ % 2);
}

void ListsScreen::Heard(UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_NOTIFY) return;
    const auto* hdr = reinterpret_cast<const NMHDR*>(lParam);
    CZELList* lists[] = {&names_, &devices_, &tracks_, &playlist_};
    for (CZELList* list : lists) {
        if (hdr->hwndFrom != list->m_hWnd) continue;
        const int row = list->GetCurSel();
        const CString text = list->GetItemText(row, 0);
        chosen_ = (hdr->code == static_cast<UINT>(NM_DBLCLK) ? L"Opened: " : L"Chosen: ") + std::wstring(text);
        ContentChanged(host_, kChosen);
    }
}

void ListsScreen::Paint(HDC frame) {
    for (const Section& s : kSections) DrawLabel(frame, s.text, s.box, sectionFont_, kTextDim);
    DrawLabel(frame, chosen_, kChosen, textFont_, kAccentLight);
}

}  // namespace zel::demo
