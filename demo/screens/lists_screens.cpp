#include "screens/lists_screens.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <vector>

#include "host/placeholder.h"
#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr RECT kList{24, 72, 520, 432};
constexpr RECT kSide{548, 80, 784, 432};
constexpr UINT kLine = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS;

CString SkinFile(const SkinSource& skin, const char* piece) { return CString(skin.Path(piece).c_str()); }

void AddPaths(CArray<CString, CString>& out, const SkinSource& skin, std::initializer_list<const char*> pieces) {
    for (const char* piece : pieces) out.Add(SkinFile(skin, piece));
}

void AddFrame(CArray<CString, CString>& out, const SkinSource& skin) {
    AddPaths(out, skin, {"list_frame_tl", "list_frame_bl", "list_frame_tr", "list_frame_br"});
}

bool IsFrom(LPARAM lParam, const CWnd& list, UINT code) {
    const auto* hdr = reinterpret_cast<const NMHDR*>(lParam);
    return hdr && hdr->hwndFrom == list.m_hWnd && hdr->code == code;
}

// Lines of the side panel, from its top.
RECT SideLine(int n, int height = 28) {
    return RECT{kSide.left, kSide.top + n * 30, kSide.right, kSide.top + n * 30 + height};
}

std::wstring Text(const CString& s) { return std::wstring(s.GetString()); }

struct Contact {
    const wchar_t* name;
    const wchar_t* number;
    const wchar_t* time;
    int kind;  // 0 a contact, 1 a missed call
};
constexpr Contact kContacts[] = {
    {L"Anna Berg", L"+46 8 555 0134", L"08:12", 0},
    {L"Bruno Costa", L"+351 21 555 0199", L"09:40", 1},
    {L"Chen Wei", L"+86 10 5555 0178", L"10:05", 0},
    {L"Dana Okafor-Whitfield of the Lighthouse Road Garage", L"+44 20 7946 0321", L"11:30", 0},
    {L"Emil Novak", L"+420 2 5555 0117", L"12:02", 1},
    {L"Farah Haddad", L"+961 1 555 012", L"13:45", 0},
    {L"Gustav Lind", L"+46 31 555 0150", L"14:10", 0},
    {L"Hana Sato", L"+81 3 5555 0163", L"15:22", 1},
    {L"Ivo Petrov", L"+359 2 555 0148", L"16:08", 0},
    {L"Julia Moreau", L"+33 1 5555 0107", L"17:55", 0},
};

}  // namespace

// ---- contacts ------------------------------------------------------------------------------

bool ContactsScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    if (!list_.CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kList, CWnd::FromHandle(host), kListId, nullptr))
        return false;
    list_.LoadScrollBitmap(SkinFile(skin, "scroll_thumb"), SkinFile(skin, "scroll_thumb_pressed"),
                           SkinFile(skin, "scroll_track"), SkinFile(skin, "scroll_up"), SkinFile(skin, "scroll_down"),
                           SkinFile(skin, "scroll_down_pressed"), SkinFile(skin, "scroll_up_pressed"));
    CArray<CString, CString> frame, contact, missed, current;
    AddFrame(frame, skin);
    list_.LoadBkImage(frame);
    AddPaths(contact, skin, {"list_row_left", "list_row_middle", "list_row_right"});
    AddPaths(missed, skin, {"list_missed_left", "list_missed_middle", "list_missed_right"});
    AddPaths(current, skin, {"list_current_left", "list_current_middle", "list_current_right"});
    list_.AddImage(contact, current);
    list_.AddImage(missed, current);
    for (const Contact& c : kContacts) {
        CArray<CString, CString> cells;
        cells.Add(c.name);
        cells.Add(c.number);
        cells.Add(c.time);
        list_.AddItem(cells, c.kind);
    }
    list_.SetSelectionMark(2);  // a favourite
    list_.SetCurSel(0);
    return true;
}

void ContactsScreen::Heard(UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_NOTIFY) return;
    if (IsFrom(lParam, list_, NM_DBLCLK)) calling_ = L"Calling " + Text(list_.GetItemText(list_.GetCurSel(), 1));
    else if (IsFrom(lParam, list_, NM_CLICK)) calling_.clear();
    else return;
    ContentChanged(host_, kSide);
}

void ContactsScreen::Paint(HDC frame) {
    const int row = list_.GetCurSel();
    DrawLabel(frame, Text(list_.GetItemText(row, 0)), SideLine(0), titleFont_, kText, kLine);
    DrawLabel(frame, Text(list_.GetItemText(row, 1)), SideLine(1), textFont_, kTextDim, kLine);
    DrawLabel(frame, L"Last call " + Text(list_.GetItemText(row, 2)), SideLine(2), textFont_, kTextDim, kLine);
    DrawLabel(frame, L"Double tap a row to call", SideLine(4), textFont_, kTextDim, kLine);
    DrawLabel(frame, calling_, SideLine(5), textFont_, kAccentLight, kLine);
}

// ---- devices ---------------------------------------------------------------------------------

bool DevicesScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    if (!list_.CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kList, CWnd::FromHandle(host), kListId, nullptr))
        return false;
    list_.LoadScrollBitmap(SkinFile(skin, "scroll_thumb"), SkinFile(skin, "scroll_thumb_pressed"),
                           SkinFile(skin, "scroll_track"), SkinFile(skin, "scroll_up"), SkinFile(skin, "scroll_down"),
                           SkinFile(skin, "scroll_down_pressed"), SkinFile(skin, "scroll_up_pressed"));
    CArray<CString, CString> frame, normal, current, icons;
    AddFrame(frame, skin);
    AddPaths(normal, skin, {"list_row_left", "list_row_middle", "list_row_right"});
    AddPaths(current, skin, {"list_current_left", "list_current_middle", "list_current_right"});
    AddPaths(icons, skin, {"list_link", "list_link_current"});
    list_.LoadBitmaps(frame, normal, current, icons);
    const wchar_t* const devices[] = {L"Car kit", L"Headset HS-20", L"Office speaker",
                                      L"A phone with a very long name indeed, from the neighbours", L"Watch",
                                      L"Kitchen radio", L"Tablet", L"Keyboard"};
    for (int i = 0; i < static_cast<int>(std::size(devices)); ++i) {
        list_.InsertItem(i, devices[i], true);
        list_.SetItemText(i, 1, L"Paired");
    }
    CString carKit(L"Car kit");
    const int connected = list_.GetIndexByName(carKit);
    list_.SetItemText(connected, 1, L"Connected");
    list_.SetSelectionMark(connected);
    list_.SetCurSel(1);
    list_.UpdataScrollBar();
    return true;
}

// A double tap connects the current device: the one connected before is found by its
// state and goes back to "Paired".
void DevicesScreen::Heard(UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_NOTIFY) return;
    if (IsFrom(lParam, list_, NM_DBLCLK)) {
        CString connected(L"Connected");
        const int before = list_.GetIndexByState(connected);
        if (before >= 0) list_.SetItemText(before, 1, L"Paired");
        list_.SetItemText(list_.GetCurSel(), 1, L"Connected");
        list_.SetSelectionMark(list_.GetCurSel());
    } else if (!IsFrom(lParam, list_, NM_CLICK)) {
        return;
    }
    ContentChanged(host_, kSide);
}

void DevicesScreen::Paint(HDC frame) {
    const int row = list_.GetCurSel();
    DrawLabel(frame, Text(list_.GetItemText(row, 0)), SideLine(0), titleFont_, kText, kLine);
    CString connected(L"Connected");
    const int linked = list_.GetIndexByState(connected);
    DrawLabel(frame, row == linked ? L"Connected" : L"Paired", SideLine(1), textFont_, kAccentLight, kLine);
    DrawLabel(frame, L"Double tap a row to connect", SideLine(3), textFont_, kTextDim, kLine);
}

// ---- files -------------------------------------------------------------------------------------

bool FilesScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    // As a dialog item: the list takes over a plain child.
    HWND placeholder = CreatePlaceholder(host, kListId, kList);
    if (!placeholder || !list_.SubclassWindow(placeholder)) return false;
    list_.LoadBkBitmap(IDB_FILE_PAPER, IDB_FILE_ROW_CURRENT, skin.module);
    list_.LoadScrollBitmap(IDB_SCROLL_THUMB, IDB_SCROLL_THUMB_PRESSED, IDB_SCROLL_TRACK, IDB_SCROLL_UP,
                           IDB_SCROLL_DOWN, IDB_SCROLL_DOWN_PRESSED, IDB_SCROLL_UP_PRESSED, skin.module);
    const wchar_t* const files[] = {L"Notes.txt", L"Holiday 2025.jpg", L"Invoice-0042.pdf", L"Playlist.m3u",
                                    L"Road trip/", L"Map of the coast road, every lay-by and lighthouse marked.png",
                                    L"Readme.txt", L"Recording 01.wav", L"Recording 02.wav", L"Recording 03.wav",
                                    L"Settings.ini", L"Song ideas.txt", L"Tickets.pdf", L"Timetable.pdf",
                                    L"Voice memo.amr", L"Wallpaper.bmp"};
    for (int i = 0; i < static_cast<int>(std::size(files)); ++i) list_.InsertItem(i, files[i], i);
    list_.MoveWindow(kList.left, kList.top, kList.right - kList.left, kList.bottom - kList.top, TRUE);
    list_.SetCurSel(0);
    SetTimer(host, kLookTimer, 250, nullptr);
    return true;
}

void FilesScreen::Heard(UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_NOTIFY || !IsFrom(lParam, list_, NM_DBLCLK)) return;
    opened_ = L"Opened " + Text(list_.GetItemText(list_.GetCurSel(), 0));
    ContentChanged(host_, kSide);
}

// The file list sends no click: the host looks at its rows again a few times a second.
void FilesScreen::Timer(UINT_PTR id) {
    if (id == kLookTimer) ContentChanged(host_, kSide);
}

void FilesScreen::Pause() { KillTimer(host_, kLookTimer); }

// Nothing to catch up on return: the marks change only under the stylus, and a hidden
// list gets none.
void FilesScreen::Resume() { SetTimer(host_, kLookTimer, 250, nullptr); }

void FilesScreen::Paint(HDC frame) {
    DrawLabel(frame, Text(list_.GetItemText(list_.GetCurSel(), 0)), SideLine(0), titleFont_, kText, kLine);
    int marked = 0;
    for (int pos = 0; list_.GetNextSelectedItemIndex(pos) >= 0;) ++marked;
    DrawLabel(frame, std::to_wstring(marked) + (marked == 1 ? L" file marked" : L" files marked"), SideLine(1),
              textFont_, kTextDim, kLine);
    DrawLabel(frame, L"Drag to mark; double tap opens", SideLine(3), textFont_, kTextDim, kLine);
    DrawLabel(frame, opened_, SideLine(4), textFont_, kAccentLight, kLine);
}

// ---- table ---------------------------------------------------------------------------------------

namespace {

struct FileRow {
    const wchar_t* name;
    int kilobytes;
    const wchar_t* kind;
};
constexpr FileRow kRows[] = {
    {L"Harbour Lights.mp3", 4120, L"Audio"}, {L"Notes.txt", 3, L"Text"},
    {L"Holiday 2025.jpg", 2210, L"Picture"}, {L"Invoice-0042.pdf", 88, L"Document"},
    {L"Recording 01.wav", 10240, L"Audio"},  {L"Map of the coast road.png", 5400, L"Picture"},
    {L"Settings.ini", 1, L"Text"},           {L"Timetable.pdf", 140, L"Document"},
    {L"Engine Off.mp3", 3020, L"Audio"},     {L"Wallpaper.bmp", 1125, L"Picture"},
    {L"Song ideas.txt", 12, L"Text"},        {L"Tickets.pdf", 64, L"Document"},
};

}  // namespace

bool TableScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    if (!list_.Create(WS_CHILD | WS_VISIBLE, RECT{24, 72, 560, 432}, CWnd::FromHandle(host), kListId)) return false;
    list_.LoadScrollBitmap(SkinFile(skin, "scroll_up") + L"|" + SkinFile(skin, "scroll_up_pressed") + L"|" +
                               SkinFile(skin, "scroll_track") + L"|" + SkinFile(skin, "scroll_thumb") + L"|" +
                               SkinFile(skin, "scroll_thumb_pressed") + L"|" + SkinFile(skin, "scroll_down") + L"|" +
                               SkinFile(skin, "scroll_down_pressed") + L"|",
                           L"");
    CString pieces;
    for (const char* piece :
         {"table_head_left", "table_head_middle", "table_head_right", "table_head_pressed_left",
          "table_head_pressed_middle", "table_head_pressed_right", "list_row_left", "list_row_middle",
          "list_row_right", "list_current_left", "list_current_middle", "list_current_right", "list_marked_left",
          "list_marked_middle", "list_marked_right"})
        pieces += SkinFile(skin, piece) + L"|";
    list_.LoadSkin(pieces, L"");
    CArray<CString, CString> frame;
    AddFrame(frame, skin);
    list_.LoadBkImage(frame);
    list_.InsertColumn(0, L"Name", LVCFMT_LEFT, 250);
    list_.InsertColumn(1, L"Size", LVCFMT_RIGHT, 110);
    list_.InsertColumn(2, L"Kind", LVCFMT_CENTER, 130);
    Fill();
    return true;
}

// The rows sorted by the chosen column, refilled from scratch.
void TableScreen::Fill() {
    std::vector<FileRow> rows(std::begin(kRows), std::end(kRows));
    std::stable_sort(rows.begin(), rows.end(), [this](const FileRow& a, const FileRow& b) {
        if (sortColumn_ == 1) return a.kilobytes < b.kilobytes;
        return std::wstring(sortColumn_ == 2 ? a.kind : a.name) < std::wstring(sortColumn_ == 2 ? b.kind : b.name);
    });
    list_.DeleteAllItems();
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        list_.InsertItem(i, rows[static_cast<size_t>(i)].name);
        list_.SetItemText(i, 1, (std::to_wstring(rows[static_cast<size_t>(i)].kilobytes) + L" kB").c_str());
        list_.SetItemText(i, 2, rows[static_cast<size_t>(i)].kind);
    }
    list_.SetSelectionMark(0);
    list_.SetCurSel(0);
    list_.EnsureVisible(0, FALSE);
}

void TableScreen::Heard(UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_NOTIFY) return;
    if (IsFrom(lParam, list_, LVN_COLUMNCLICK)) {
        sortColumn_ = reinterpret_cast<const NMLISTVIEW*>(lParam)->iSubItem;
        Fill();
    } else if (!IsFrom(lParam, list_, NM_CLICK) && !IsFrom(lParam, list_, NM_DBLCLK)) {
        return;
    }
    ContentChanged(host_, kSide);
}

void TableScreen::Paint(HDC frame) {
    const RECT side{584, 80, 784, 432};
    const wchar_t* const names[] = {L"name", L"size", L"kind"};
    DrawLabel(frame, L"Sorted by " + std::wstring(names[std::clamp(sortColumn_, 0, 2)]),
              RECT{side.left, side.top, side.right, side.top + 28}, titleFont_, kText, kLine);
    DrawLabel(frame, Text(list_.GetItemText(list_.GetCurSel(), 0)), RECT{side.left, side.top + 30, side.right, side.top + 58},
              textFont_, kAccentLight, kLine);
    DrawLabel(frame, L"Tap a heading to sort", RECT{side.left, side.top + 90, side.right, side.top + 118}, textFont_,
              kTextDim, kLine);
}

}  // namespace zel::demo
