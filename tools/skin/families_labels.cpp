// The three-piece label, the telephone display, the background label and the static picture.
#include "CZELBkLable.h"
#include "CZELLable.h"
#include "CZELStatic.h"
#include "CZELTelLCD.h"
#include "family.h"

namespace zel::skintool {

namespace {

constexpr COLORREF kInk = RGB(230, 234, 240);
constexpr COLORREF kLcdInk = RGB(24, 40, 24);  // dark digits, as on a lit display

std::unique_ptr<CWnd> MakeLabel(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto label = std::make_unique<CZELLable>();
    if (!label->Create(nullptr, L"Label text", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    // SetFont does not repaint; loading the pieces does.
    const CRect text(8, 0, place.right - place.left - 8, place.bottom - place.top);
    label->SetFont(20, kInk, DT_CENTER | DT_VCENTER | DT_SINGLELINE, text);
    label->LoadSkin(skin.SkinString(0, 3), L"");
    return label;
}

std::unique_ptr<CWnd> MakeDisplay(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto display = std::make_unique<CZELTelLCD>();
    if (!display->Create(nullptr, L"0049 89 4711", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    CArray<CString, CString> frame, indicators;
    for (size_t i = 0; i < 3; ++i) frame.Add(skin.Path(i));
    for (size_t i = 3; i < 5; ++i) indicators.Add(skin.Path(i));
    DWORD colors[3] = {kLcdInk, kLcdInk, 0};
    int heights[3] = {44, 15, 0};
    display->InitCtrl(frame, indicators, colors, heights, 1);
    CString status = L"Ready";
    display->SetszTime(status);
    display->Invalidate();  // InitCtrl changes fonts and pieces without repainting
    return display;
}

// The picture stays the host's: it is deleted after the control is gone.
template <typename Control>
class WithPicture : public Control {
public:
    explicit WithPicture(const CString& path) : picture_(static_cast<HBITMAP>(SHLoadDIBitmap(path))) {}
    ~WithPicture() override {
        if (picture_) DeleteObject(picture_);
    }
    HBITMAP picture() const { return picture_; }

private:
    HBITMAP picture_;
};

std::unique_ptr<CWnd> MakeStatic(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto picture = std::make_unique<WithPicture<CZELStatic>>(skin.Path(0));
    if (!picture->Create(L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP, place, &parent, 1)) return nullptr;
    picture->SetBitmap(picture->picture());
    return picture;
}

// The label shows the part of the screen bitmap under its own window.
std::unique_ptr<CWnd> MakeBackgroundLabel(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto label = std::make_unique<WithPicture<CZELBkLable>>(skin.Path(0));
    if (!label->Create(nullptr, L"Office, reception", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    label->SetFont(22, kInk, DT_SINGLELINE | DT_VCENTER, CRect());
    label->SetBitmap(label->picture());
    return label;
}

}  // namespace

std::vector<Family> LabelFamilies() {
    return {
        {"CZELLable",
         {"left cap", "middle", "right cap"},
         nullptr,
         {{RuleKind::SameHeight, {0, 1, 2}}},
         {"normal"},
         [](const SpecimenSkin& skin) {
             return SIZE{240, skin.sizes[1].cy};
         },
         MakeLabel},
        {"CZELTelLCD",
         {"left cap", "middle", "right cap", "left indicator", "right indicator"},
         nullptr,
         {{RuleKind::SameHeight, {0, 1, 2}}, {RuleKind::SameHeight, {3, 4}}},
         {"number and status"},
         [](const SpecimenSkin& skin) {
             return SIZE{466, skin.sizes[1].cy};
         },
         MakeDisplay},
        // The piece under the window is cut from a bitmap the size of the screen.
        {"CZELBkLable",
         {"screen"},
         nullptr,
         {{RuleKind::Exact, {0}, 800, 480}},
         {"over the screen"},
         [](const SpecimenSkin&) {
             return SIZE{354, 28};
         },
         MakeBackgroundLabel},
        {"CZELStatic",
         {"picture"},
         nullptr,
         {},
         {"shaped"},
         [](const SpecimenSkin& skin) { return skin.sizes[0]; },
         MakeStatic},
    };
}

}  // namespace zel::skintool
