// The special lists: the play, telephone and Bluetooth lists, the file browser and the
// table. Each owns a scroll bar, whose seven pieces follow the list's own in the bar's
// skin-string order (up, up pressed, track, thumb, thumb pressed, down, down pressed); the
// lists themselves take them in the bar's LoadBitmapW order.
#include "CBbgFileList.h"
#include "CZELBTList.h"
#include "CZELListCtrl.h"
#include "CZELPlayList.h"
#include "CZELTelList.h"
#include "family.h"

namespace zel::skintool {

std::vector<SizeRule> ScrollBarRules(int first);  // families_scroll.cpp

namespace {

enum ListState { kRows, kCurrent, kMarked };
constexpr int kShownRows = 4;
const wchar_t* const kRowTexts[] = {L"Car kit.mp3", L"Headset.mp3", L"Office speaker.mp3", L"Watch.mp3",
                                    L"Kitchen radio.mp3", L"Tablet.mp3"};

// The frame's four corners, the ordinary row and the current row: the play, telephone and
// Bluetooth lists share this head of their skins.
enum FramedPiece { kTopLeft, kBottomLeft, kTopRight, kBottomRight, kRowLeft, kRowMiddle, kRowRight,
                   kCurLeft, kCurMiddle, kCurRight, kFramedPieces };
const std::vector<const char*> kFramedRoles{"frame top left", "frame bottom left", "frame top right",
                                            "frame bottom right", "row left", "row middle", "row right",
                                            "current left", "current middle", "current right"};
const std::vector<const char*> kBarRoles{"bar up",    "bar up pressed", "bar track",       "bar thumb",
                                         "bar thumb pressed", "bar down", "bar down pressed"};

std::vector<const char*> Roles(std::vector<const char*> head, std::vector<const char*> tail) {
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

// Both row sets are drawn with the current set's sizes: the caps must match, the frame's
// corners are one size, and the bar follows its own rules.
std::vector<SizeRule> FramedRules(int barFirst, std::vector<SizeRule> more = {}) {
    std::vector<SizeRule> rules{{RuleKind::SameSize, {kTopLeft, kBottomLeft, kTopRight, kBottomRight}},
                                {RuleKind::SameHeight, {kRowLeft, kRowMiddle, kRowRight}},
                                {RuleKind::SameHeight, {kCurLeft, kCurMiddle, kCurRight}},
                                {RuleKind::SameSize, {kRowLeft, kCurLeft}},
                                {RuleKind::SameSize, {kRowRight, kCurRight}}};
    rules.insert(rules.end(), more.begin(), more.end());
    for (const SizeRule& r : ScrollBarRules(barFirst)) rules.push_back(r);
    return rules;
}

void Paths(CArray<CString, CString>& out, const SpecimenSkin& skin, size_t first, size_t count) {
    for (size_t i = first; i < first + count; ++i) out.Add(skin.Path(i));
}

// The bar's pieces from `first` (skin-string order), handed over in LoadBitmapW's order.
template <class List>
void LoadBar(List& list, const SpecimenSkin& skin, size_t first) {
    auto at = [&](size_t i) { return skin.Path(first + i); };
    list.LoadScrollBitmap(at(3), at(4), at(2), at(0), at(5), at(6), at(1));
}

// Rows and states on a list built on the list base: row 1 current, row 2 marked.
template <class List>
void FillAndSetState(List& list, size_t state) {
    list.SetCurSel(state == kRows ? -1 : 1);
    list.SetSelectionMark(state == kMarked ? 2 : -1);
    list.UpdataScrollBar();
    list.Invalidate();
}

SIZE FramedWindow(const SpecimenSkin& skin) {
    return SIZE{320, kShownRows * std::max<LONG>(skin.sizes[kCurLeft].cy, 1) + 24};
}

std::unique_ptr<CWnd> MakePlayList(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto list = std::make_unique<CZELPlayList>();
    if (!list->CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1, nullptr)) return nullptr;
    LoadBar(*list, skin, kFramedPieces);
    list->LoadSkin(skin.SkinString(0, kFramedPieces), L"");
    for (int i = 0; i < 6; ++i) {
        const int row = list->InsertItem(i, kRowTexts[i], 1);
        list->SetItemText(row, 1, L"3:45");
    }
    FillAndSetState(*list, state);
    return list;
}

// The telephone list: pieces past the bar are further ordinary row sets, three at a time,
// each drawn with the one current set (as the contacts screen gives its missed calls).
std::unique_ptr<CWnd> MakeTelList(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto list = std::make_unique<CZELTelList>();
    if (!list->CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1, nullptr)) return nullptr;
    LoadBar(*list, skin, kFramedPieces);
    CArray<CString, CString> frame, current;
    Paths(frame, skin, kTopLeft, 4);
    list->LoadBkImage(frame);
    Paths(current, skin, kCurLeft, 3);
    auto addSet = [&](size_t first) {
        CArray<CString, CString> normal;
        Paths(normal, skin, first, 3);
        list->AddImage(normal, current);
    };
    addSet(kRowLeft);
    for (size_t first = kFramedPieces + 7; first + 3 <= skin.paths.size(); first += 3) addSet(first);
    const wchar_t* rows[][3] = {{L"Anna Berg", L"+46 8 555 0101", L"09:12"},
                                {L"Bruno Costa", L"+351 21 555 0190", L"10:40"},
                                {L"Chen Wei", L"+86 10 5555 0177", L"11:03"},
                                {L"Dana Novak", L"+420 2 5555 0122", L"12:30"},
                                {L"Emil Larsen", L"+45 33 55 01 88", L"13:15"}};
    int image = 0;
    for (auto& row : rows) {
        CArray<CString, CString> cells;
        for (const wchar_t* cell : row) cells.Add(cell);
        list->AddItem(cells, image);
        image = (image + 1) % std::max(list->GetImageSetCount(), 1);
    }
    FillAndSetState(*list, state);
    return list;
}

enum BTPiece { kIcon = kFramedPieces, kCurIcon, kBTBar };

std::unique_ptr<CWnd> MakeBTList(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto list = std::make_unique<CZELBTList>();
    if (!list->CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1, nullptr)) return nullptr;
    LoadBar(*list, skin, kBTBar);
    CArray<CString, CString> frame, normal, current, icons;
    Paths(frame, skin, kTopLeft, 4);
    Paths(normal, skin, kRowLeft, 3);
    Paths(current, skin, kCurLeft, 3);
    Paths(icons, skin, kIcon, 2);
    list->LoadBitmaps(frame, normal, current, icons);
    const wchar_t* devices[] = {L"Car kit", L"Headset", L"Office speaker", L"Watch", L"Kitchen radio", L"Tablet"};
    for (int i = 0; i < 6; ++i) {
        list->InsertItem(i, devices[i], 1);
        list->SetItemText(i, 1, L"Paired");
    }
    // The marked state shows both icons: on an ordinary row and on the current one.
    FillAndSetState(*list, state);
    return list;
}

enum FilePiece { kFileBack, kFileCurrent, kFileBar };

// The file browser is skinned from resources only: a file skin leaves it bare.
std::unique_ptr<CWnd> MakeFileList(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto list = std::make_unique<CBbgFileList>();
    if (!list->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1, nullptr)) return nullptr;
    auto id = [&](size_t i) { return i < skin.ids.size() ? skin.ids[i] : 0U; };
    list->LoadBkBitmap(id(kFileBack), id(kFileCurrent), skin.module);
    list->LoadScrollBitmap(id(kFileBar + 3), id(kFileBar + 4), id(kFileBar + 2), id(kFileBar + 0), id(kFileBar + 5),
                           id(kFileBar + 6), id(kFileBar + 1), skin.module);
    for (int i = 0; i < 8; ++i) list->InsertItem(i, kRowTexts[i % 6], i);
    list->MoveWindow(place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
    list->SetCurSel(state == kRows ? -1 : 1);
    if (state == kMarked) list->SetItemState(2, 2, 0);
    list->UpdataScrollBar();
    return list;
}

enum TablePiece { kHeadLeft = 0, kRowsFirst = 6, kTableBar = 15, kTableFrame = kTableBar + 7 };

std::unique_ptr<CWnd> MakeTable(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto list = std::make_unique<CZELListCtrl>();
    if (!list->Create(WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    LoadBar(*list, skin, kTableBar);
    list->LoadSkin(skin.SkinString(0, kTableBar), L"");
    CArray<CString, CString> frame;  // the base's four corners, when the skin names them
    if (skin.paths.size() >= kTableFrame + 4) Paths(frame, skin, kTableFrame, 4);
    list->LoadBkImage(frame);
    list->InsertColumn(0, L"Name", LVCFMT_LEFT, 180);
    list->InsertColumn(1, L"Size", LVCFMT_RIGHT, 80);
    list->InsertColumn(2, L"Kind", LVCFMT_CENTER, 100);
    const wchar_t* rows[][3] = {{L"Notes.txt", L"4 kB", L"Text"},
                                {L"Holiday.jpg", L"812 kB", L"Picture"},
                                {L"Invoice.pdf", L"96 kB", L"Document"},
                                {L"Memo.amr", L"38 kB", L"Sound"},
                                {L"Tickets.pdf", L"120 kB", L"Document"},
                                {L"Readme.txt", L"2 kB", L"Text"}};
    for (int i = 0; i < 6; ++i) {
        list->InsertItem(i, rows[i][0]);
        list->SetItemText(i, 1, rows[i][1]);
        list->SetItemText(i, 2, rows[i][2]);
    }
    FillAndSetState(*list, state);
    return list;
}

}  // namespace

std::vector<Family> ListSpecialFamilies() {
    const std::vector<const char*> states{"rows", "current", "marked"};
    return {
        // LoadSkin's ten paths, then the bar.
        {"CZELPlayList", Roles(kFramedRoles, kBarRoles), nullptr, FramedRules(kFramedPieces), states, FramedWindow,
         MakePlayList},
        {"CZELTelList", Roles(kFramedRoles, kBarRoles), "further row set (left, middle, right)",
         FramedRules(kFramedPieces), states, FramedWindow, MakeTelList},
        {"CZELBTList", Roles(Roles(kFramedRoles, {"icon", "icon current"}), kBarRoles), nullptr,
         FramedRules(kBTBar, {{RuleKind::SameSize, {kIcon, kCurIcon}}}), states, FramedWindow, MakeBTList},
        // The whole-screen background the list shows through, the current row's bitmap
        // (its height is the row height), then the bar.
        {"CBbgFileList", Roles({"screen background", "current row"}, kBarRoles), nullptr, ScrollBarRules(kFileBar),
         states,
         [](const SpecimenSkin& skin) {
             return SIZE{320, kShownRows * std::max<LONG>(skin.sizes[kFileCurrent].cy, 24)};  // 24: the bare list's rows
         },
         MakeFileList},
        // LoadSkin's fifteen pieces, the bar, then the base's frame corners (LoadBkImage).
        {"CZELListCtrl",
         Roles({"heading left", "heading middle", "heading right", "heading pressed left", "heading pressed middle",
                "heading pressed right", "row left", "row middle", "row right", "current left", "current middle",
                "current right", "marked left", "marked middle", "marked right"},
               Roles(kBarRoles, {"frame top left", "frame bottom left", "frame top right", "frame bottom right"})),
         nullptr,
         [] {
             std::vector<SizeRule> rules{{RuleKind::SameHeight, {0, 1, 2, 3, 4, 5}},
                                         {RuleKind::SameHeight, {6, 7, 8, 9, 10, 11, 12, 13, 14}},
                                         {RuleKind::SameSize, {kTableFrame, kTableFrame + 1, kTableFrame + 2,
                                                               kTableFrame + 3}}};
             for (const SizeRule& r : ScrollBarRules(kTableBar)) rules.push_back(r);
             return rules;
         }(),
         states,
         [](const SpecimenSkin& skin) {
             return SIZE{400, std::max<LONG>(skin.sizes[kHeadLeft].cy, 1) +
                                  kShownRows * std::max<LONG>(skin.sizes[kRowsFirst + 1].cy, 1) + 24};
         },
         MakeTable},
    };
}

}  // namespace zel::skintool
