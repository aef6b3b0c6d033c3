#include "tour/keys.h"

#include <cstdio>

namespace zel::demo {

namespace {

struct KeyName {
    const char* name;
    UINT vk;
};

// The keys a device's hardware buttons and a keyboard in the viewer produce.
constexpr KeyName kKeys[] = {
    {"VK_BACK", VK_BACK},   {"VK_TAB", VK_TAB},       {"VK_RETURN", VK_RETURN}, {"VK_SHIFT", VK_SHIFT},
    {"VK_CONTROL", VK_CONTROL}, {"VK_MENU", VK_MENU}, {"VK_ESCAPE", VK_ESCAPE}, {"VK_SPACE", VK_SPACE},
    {"VK_PRIOR", VK_PRIOR}, {"VK_NEXT", VK_NEXT},     {"VK_END", VK_END},       {"VK_HOME", VK_HOME},
    {"VK_LEFT", VK_LEFT},   {"VK_UP", VK_UP},         {"VK_RIGHT", VK_RIGHT},   {"VK_DOWN", VK_DOWN},
    {"VK_INSERT", VK_INSERT}, {"VK_DELETE", VK_DELETE},
    {"VK_F1", VK_F1},       {"VK_F2", VK_F1 + 1},     {"VK_F3", VK_F1 + 2},     {"VK_F4", VK_F1 + 3},
    {"VK_F5", VK_F1 + 4},   {"VK_F6", VK_F1 + 5},     {"VK_F7", VK_F1 + 6},     {"VK_F8", VK_F1 + 7},
    {"VK_F9", VK_F1 + 8},   {"VK_F10", VK_F1 + 9},    {"VK_F11", VK_F1 + 10},   {"VK_F12", VK_F1 + 11},
};

}  // namespace

std::optional<UINT> VirtualKeyFromName(std::string_view name) {
    for (const KeyName& k : kKeys)
        if (name == k.name) return k.vk;
    return std::nullopt;
}

std::string VirtualKeyName(UINT vk) {
    for (const KeyName& k : kKeys)
        if (vk == k.vk) return k.name;
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%02X", vk);
    return hex;
}

}  // namespace zel::demo
