// The image list (the list base is abstract: its skin belongs to the lists built on it).
#include "family.h"

namespace zel::skintool {

std::vector<Family> ListFamilies() {
    return {
        // The list's own piece numbering; further pieces are AddImage rows, three at a
        // time (left cap, middle, right cap), normal then selected.
        {"CZELList",
         {"left", "middle", "right", "separator", "left selected", "middle selected", "right selected", "mark",
          "mark selected", "panel", "list background", "badge", "badge selected"},
         "row image",
         {{RuleKind::SameHeight, {0, 1, 2}},
          {RuleKind::SameHeight, {4, 5, 6}},
          {RuleKind::SameHeight, {0, 4}},
          {RuleKind::SameSize, {7, 8}},
          {RuleKind::SameSize, {11, 12}}},
         {}, nullptr, nullptr},
    };
}

}  // namespace zel::skintool
