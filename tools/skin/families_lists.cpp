// The image list (the list base is abstract: its skin belongs to the lists built on it).
#include "CZELList.h"
#include "family.h"

namespace zel::skintool {

namespace {

enum ListPiece {
    kLeft,
    kMiddle,
    kRight,
    kSeparator,
    kSelLeft,
    kSelMiddle,
    kSelRight,
    kMark,
    kSelMark,
    kPanel,
    kListBack,
    kBadge,
    kSelBadge,
    kPieces
};
enum ListState { kRows, kSelected, kMarked };

// Style 2 shows every row piece the list has: rows, separators, the panel and the marks.
std::unique_ptr<CWnd> MakeList(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto list = std::make_unique<CZELList>();
    if (!list->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    list->LoadBitmapW(skin.Path(kLeft), skin.Path(kMiddle), skin.Path(kRight), skin.Path(kSeparator));
    list->LoadSelBitmaps(skin.Path(kSelLeft), skin.Path(kSelMiddle), skin.Path(kSelRight), skin.Path(kMark),
                         skin.Path(kSelMark));
    list->LoadBkBitmap(skin.Path(kPanel));
    list->LoadClrBitmap(skin.Path(kListBack));
    list->LoadBitBmp2(skin.Path(kBadge), skin.Path(kSelBadge));
    int fonts[4] = {18, 18, 14, 14};
    COLORREF colours[2] = {RGB(230, 234, 240), RGB(255, 255, 255)};
    list->SetFontSizeAndClr(fonts, colours);
    list->SetSytle(2);
    list->SetInterval(10, 10, 4);
    list->SetItemHeight(skin.sizes[kMiddle].cy + 2);
    const wchar_t* rows[][2] = {
        {L"Car kit", L"paired"}, {L"Headset", L"paired"}, {L"Speaker", L"in range"}, {L"Watch", L"off"}};
    for (auto& row : rows) {
        CArray<CString, CString> texts;
        texts.Add(row[0]);
        texts.Add(row[1]);
        list->AddItem(texts, 0);
    }
    list->SetSelectionMark(-1);
    list->SetCurSel(state == kRows ? -1 : 1);
    if (state == kMarked) {
        list->SetItemState(1, 2, 0);
        list->SetItemState(3, 2, 0);
    }
    return list;
}

}  // namespace

std::vector<Family> ListFamilies() {
    return {
        // The list's own piece numbering; further pieces are AddImage rows, three at a
        // time (left cap, middle, right cap), normal then selected.
        {"CZELList",
         {"left", "middle", "right", "separator", "left selected", "middle selected", "right selected", "mark",
          "mark selected", "panel", "list background", "badge", "badge selected"},
         "row image",
         {{RuleKind::SameHeight, {kLeft, kMiddle, kRight}},
          {RuleKind::SameHeight, {kSelLeft, kSelMiddle, kSelRight}},
          {RuleKind::SameHeight, {kLeft, kSelLeft}},
          {RuleKind::SameSize, {kMark, kSelMark}},
          {RuleKind::SameSize, {kBadge, kSelBadge}}},
         {"rows", "selected", "marked"},
         [](const SpecimenSkin& skin) {
             return SIZE{320, 4 * (skin.sizes[kMiddle].cy + 2) + 24};
         },
         MakeList},
    };
}

}  // namespace zel::skintool
