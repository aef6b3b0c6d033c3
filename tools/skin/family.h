// What zel-skin knows about one control class: its pieces in skin-string order, the sizes
// and relations its layout expects of them, and how to make it paint each of its states.
//
// A family joins the tool with one entry in Families() (families.cpp); the entry's
// functions live in families_<area>.cpp beside the others.
#pragma once

#include <afxwin.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zel::skintool {

enum class RuleKind {
    SameSize,    // every listed piece the size of the first present one (the states of one control)
    SameHeight,  // a frame's caps and middle
    SameWidth,
    Exact,       // the first listed piece is width x height
    NoWider,     // the first listed piece is no wider than the second (a thumb in its track)
    KeyColour,   // each listed piece has at least one pixel of `key`
    KeyCorners,  // a shape taken from the top-left pixel: the other corners are that colour too
};

struct SizeRule {
    RuleKind kind;
    std::vector<int> pieces;  // indices into Family::pieces
    int width = 0, height = 0;
    COLORREF key = 0;
};

// The pieces of one control as the sheet hands them over: files (empty when left out)
// and, for a script skin, the resource identifiers and the loaded module.
struct SpecimenSkin {
    std::vector<std::string> paths;
    std::vector<UINT> ids;  // 0 where the piece has no identifier
    HINSTANCE module = nullptr;
    std::vector<SIZE> sizes;  // 0 x 0 for a piece missing or unreadable

    CString Path(size_t i) const;  // L"" past the end
    // Pieces [first, first + count) as a LoadSkin string, each followed by "|".
    CString SkinString(size_t first, size_t count) const;
};

struct Family {
    const char* className;              // as written in the control list
    std::vector<const char*> pieces;    // roles, in skin-string order
    const char* extraPieces = nullptr;  // role of any further pieces (row images), or none
    std::vector<SizeRule> rules;
    std::vector<const char*> states;  // what the sheet shows; empty: checked only
    // The window's size on the sheet for this skin (the device size it is used at).
    SIZE (*windowSize)(const SpecimenSkin&) = nullptr;
    // Creates the control as a child of `parent` at `place`, dresses it and puts it in
    // states[state]. The sheet pumps messages, copies the window from the screen and
    // then destroys the parent (and with it the control) before deleting the object.
    std::unique_ptr<CWnd> (*make)(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) = nullptr;
};

const std::vector<Family>& Families();
const Family* FindFamily(std::string_view className);

// Shared by the families' make functions: lets the control paint once (some lay out their
// hit cells there), then presses the window's centre through the desktop (the control
// sees a real WM_LBUTTONDOWN and keeps the capture).
void PressCentre(CWnd& control);

// The families of each area, in the order Families() lists them.
std::vector<Family> ButtonFamilies();
std::vector<Family> ScrollFamilies();
std::vector<Family> ListFamilies();
std::vector<Family> DateTimeFamilies();
std::vector<Family> ComboFamilies();
std::vector<Family> LabelFamilies();
std::vector<Family> ListSpecialFamilies();

}  // namespace zel::skintool
