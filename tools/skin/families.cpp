#include "family.h"

#include <zel/desktop.h>

namespace zel::skintool {

CString SpecimenSkin::Path(size_t i) const { return i < paths.size() ? CString(paths[i].c_str()) : CString(L""); }

CString SpecimenSkin::SkinString(size_t first, size_t count) const {
    CString text;
    for (size_t i = first; i < first + count; ++i) text += Path(i) + L"|";
    return text;
}

void PressCentre(CWnd& control) {
    zel::Desktop::Get().RunUntilIdle();  // hit cells are laid out by the first paint
    CRect rc;
    control.GetWindowRect(&rc);
    zel::Desktop::Get().PointerDown(rc.CenterPoint().x, rc.CenterPoint().y);
}

// One line per area.
const std::vector<Family>& Families() {
    static const std::vector<Family> table = [] {
        std::vector<Family> all;
        for (auto area :
             {ButtonFamilies, ScrollFamilies, ListFamilies, DateTimeFamilies, ComboFamilies, LabelFamilies,
              ListSpecialFamilies}) {
            std::vector<Family> some = area();
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return table;
}

const Family* FindFamily(std::string_view className) {
    for (const Family& f : Families())
        if (className == f.className) return &f;
    return nullptr;
}

}  // namespace zel::skintool
