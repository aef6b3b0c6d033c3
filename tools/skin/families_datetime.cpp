// The spinner, the time-and-date control and the time field.
#include "family.h"

namespace zel::skintool {

std::vector<Family> DateTimeFamilies() {
    const std::vector<const char*> spinner{"add normal", "add focus", "add pressed", "def normal", "def focus",
                                           "def pressed", "back colour", "frame colour", "box colour"};
    std::vector<const char*> clock = spinner;
    clock.push_back("dash");
    clock.push_back("colon");
    const std::vector<SizeRule> buttons{{RuleKind::SameSize, {0, 1, 2}}, {RuleKind::SameSize, {3, 4, 5}},
                                        {RuleKind::SameSize, {0, 3}}};
    return {
        {"CZELDate", spinner, nullptr, buttons, {}, nullptr, nullptr},
        {"CZELTimeDate", clock, nullptr, buttons, {}, nullptr, nullptr},
        {"CTimeData", {"background"}, nullptr, {}, {}, nullptr, nullptr},
    };
}

}  // namespace zel::skintool
