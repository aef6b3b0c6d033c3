// The spinner, the time-and-date control and the time field.
#include <zel/desktop.h>

#include "CTimeData.h"
#include "CZELDate.h"
#include "CZELTimeDate.h"
#include "family.h"

namespace zel::skintool {

namespace {

constexpr COLORREF kInk = RGB(230, 234, 240);

// The folder form of their LoadSkin with an empty folder: each name is a whole path.
CString Names(const SpecimenSkin& skin, size_t count) { return skin.SkinString(0, count); }

std::unique_ptr<CWnd> MakeSpinner(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto spinner = std::make_unique<CZELDate>();
    if (!spinner->Create(L"Format", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    if (state == 1) {
        spinner->SetVStyle(false);
        for (const wchar_t* s : {L"24-hour", L"12-hour", L"Automatic"}) spinner->InsertStr(s);
    } else {
        spinner->SetVStyle(true);
        spinner->SetRang(1, 31);
        spinner->SetPos(17);
    }
    spinner->SetTextCol(kInk);
    spinner->LoadSkin(L"", Names(skin, 9));
    // The value style stacks its buttons above and below the value, as the clock's spinners.
    CRect rc(place);
    if (state == 0) rc = CRect(rc.left, rc.top, rc.left + 64, rc.top + 130);
    spinner->MoveWindow(rc, true);
    return spinner;
}

// The clock's colon blinks at half rate on its 500 ms timer: "colon off" is one tick later.
std::unique_ptr<CWnd> MakeTimeDate(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto control = std::make_unique<CZELTimeDate>();
    if (!control->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    if (state > 0) control->SetStyle(1);
    control->LoadSkin(L"", Names(skin, 11));
    if (state == 2) zel::Desktop::Get().Advance(500);
    return control;
}

std::unique_ptr<CWnd> MakeTimeField(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto field = std::make_unique<CTimeData>();
    if (!field->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    field->SetStyle(1);
    field->LoadBitmapW(skin.ids.at(0), skin.module);
    return field;
}

}  // namespace

std::vector<Family> DateTimeFamilies() {
    const std::vector<const char*> spinner{"add normal",  "add focus",   "add pressed",  "def normal", "def focus",
                                           "def pressed", "back colour", "frame colour", "box colour"};
    std::vector<const char*> clock = spinner;
    clock.push_back("dash");
    clock.push_back("colon");
    const std::vector<SizeRule> buttons{
        {RuleKind::SameSize, {0, 1, 2}}, {RuleKind::SameSize, {3, 4, 5}}, {RuleKind::SameSize, {0, 3}}};
    return {
        {"CZELDate",
         spinner,
         nullptr,
         buttons,
         {"values", "strings"},
         [](const SpecimenSkin&) {
             return SIZE{240, 40};
         },
         MakeSpinner},
        {"CZELTimeDate",
         clock,
         nullptr,
         buttons,
         {"date", "clock colon on", "clock colon off"},
         [](const SpecimenSkin&) {
             return SIZE{202, 130};
         },
         MakeTimeDate},
        // Only a resource identifier: the sheet shows it for script skins.
        {"CTimeData",
         {"background"},
         nullptr,
         {},
         {"running"},
         [](const SpecimenSkin& skin) {
             return SIZE{64, std::max<LONG>(20, skin.sizes[0].cy)};
         },
         MakeTimeField},
    };
}

}  // namespace zel::skintool
