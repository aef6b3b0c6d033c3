#include "skin/resource_files.h"

#include <algorithm>

namespace zel::demo {

namespace {

std::string Padded(std::string s, size_t width) {
    s.resize(std::max(width, s.size() + 1), ' ');
    return s;
}

size_t LongestName(const std::vector<SkinPiece>& pieces) {
    size_t n = 0;
    for (const SkinPiece& p : pieces) n = std::max(n, ResourceName(p.name).size());
    return n;
}

struct DressedControl {
    const char* cls;
    std::string name;
    std::vector<std::string> pieces;  // piece names; the list writes their resource names
};

std::vector<std::string> States(const std::string& stem, std::initializer_list<const char*> states) {
    std::vector<std::string> names;
    for (const char* state : states) names.push_back(stem + "_" + state);
    return names;
}

std::vector<std::string> Joined(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> all;
    for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// The screens' controls and the pieces they load, in each class's skin-string order.
std::vector<DressedControl> DressedControls() {
    const std::vector<std::string> bar{"scroll_up", "scroll_up_pressed", "scroll_track", "scroll_thumb",
                                       "scroll_thumb_pressed", "scroll_down", "scroll_down_pressed"};
    const std::vector<std::string> spinner{"spin_add_normal", "spin_add_focus", "spin_add_pressed",
                                           "spin_def_normal", "spin_def_focus", "spin_def_pressed",
                                           "spin_back", "spin_frame", "spin_box"};
    std::vector<DressedControl> controls;
    for (const char* glyph : {"plus", "minus", "prev", "next"})
        controls.push_back({"CZELButton", glyph, States(std::string("button_") + glyph, {"normal", "focus", "pressed", "disabled"})});
    for (const char* key : {"key0", "key1", "key2", "key3", "key4", "key5", "key6", "key7", "key8", "key9", "keystar", "keyhash"})
        controls.push_back({"CZELButton", key, States(std::string("button_") + key, {"normal", "focus", "pressed", "disabled"})});
    for (const char* glyph : {"play", "pause"})
        controls.push_back({"CZELBmpButton", glyph, States(std::string("round_") + glyph, {"normal", "focus", "pressed", "disabled"})});
    controls.push_back({"CBmpTextButton", "text", States("textbutton", {"normal", "focus", "pressed"})});
    controls.push_back({"CZELChkBox", "shuffle", {"check_checked", "check_unchecked", "check_back"}});
    controls.push_back({"CZELScrollbar", "list_bar", bar});
    controls.push_back({"CZELSlider", "volume",
                        {"slider_left_cap", "slider_right_cap", "slider_thumb", "slider_thumb_released",
                         "slider_thumb_pressed", "slider_channel_fill", "slider_channel", "slider_channel_left",
                         "slider_channel_right"}});
    controls.push_back({"CZELSlider/progress", "progress", {"progress_back", "progress_fill"}});
    controls.push_back({"CZELDate", "format", spinner});
    controls.push_back({"CZELTimeDate", "clock", Joined({spinner, {"spin_dash", "spin_colon"}})});
    controls.push_back({"CTimeData", "time_field", {"timefield_back"}});
    controls.push_back({"CZELTelLCD", "number", {"lcd_left", "lcd_middle", "lcd_right", "lcd_signal", "lcd_battery"}});
    controls.push_back({"CZELLable", "caption", {"label_left", "label_middle", "label_right"}});
    controls.push_back({"CZELStatic", "portrait", {"portrait"}});
    controls.push_back({"CZELBkLable", "last_name", {"background"}});
    controls.push_back({"CZELComBox", "language",
                        Joined({{"combo_left", "combo_middle", "combo_right", "combo_arrow", "combo_arrow_pressed",
                                 "combo_row", "combo_row_selected"}, bar})});
    controls.push_back({"CZELList", "playlist",
                        {"list_left", "list_middle", "list_right", "list_separator", "list_left_sel",
                         "list_middle_sel", "list_right_sel", "list_mark", "list_mark_sel", "list_panel", "list_back",
                         "list_badge", "list_badge_sel", "list_alt_left", "list_alt_middle", "list_alt_right"}});
    controls.push_back({"CZELList", "tracks",
                        {"list3_left", "list3_middle", "list3_right", "list_separator", "list3_left_sel",
                         "list3_middle_sel", "list3_right_sel", "list_mark", "list_mark_sel"}});
    // The special lists as the contacts, devices, files, table and player screens dress them.
    const std::vector<std::string> frame{"list_frame_tl", "list_frame_bl", "list_frame_tr", "list_frame_br"};
    const std::vector<std::string> rows{"list_row_left", "list_row_middle", "list_row_right"};
    const std::vector<std::string> current{"list_current_left", "list_current_middle", "list_current_right"};
    controls.push_back({"CZELPlayList", "player_tracks", Joined({frame, rows, current, bar})});
    controls.push_back({"CZELTelList", "contacts",
                        Joined({frame, rows, current, bar, {"list_missed_left", "list_missed_middle", "list_missed_right"}})});
    controls.push_back({"CZELBTList", "devices", Joined({frame, rows, current, {"list_link", "list_link_current"}, bar})});
    controls.push_back({"CBbgFileList", "files", Joined({{"file_paper", "file_row_current"}, bar})});
    controls.push_back({"CZELListCtrl", "table",
                        Joined({{"table_head_left", "table_head_middle", "table_head_right", "table_head_pressed_left",
                                 "table_head_pressed_middle", "table_head_pressed_right"},
                                rows, current, {"list_marked_left", "list_marked_middle", "list_marked_right"}, bar, frame})});
    return controls;
}

}  // namespace

std::string ControlListText() {
    std::string text =
        "# The demo's controls and the pieces each wears, for zel-skin. Generated by zel-skin-gen; do not edit.\n"
        "# class  name  pieces in the class's skin-string order\n";
    for (const DressedControl& c : DressedControls()) {
        text += std::string(c.cls) + " " + c.name;
        for (const std::string& piece : c.pieces) text += " " + ResourceName(piece);
        text += "\n";
    }
    return text;
}

std::string ResourceHeaderText(const std::vector<SkinPiece>& pieces) {
    std::string text =
        "// Bitmap identifiers of the demo's default skin. Generated by zel-skin-gen; do not edit.\n"
        "#pragma once\n\n";
    const size_t column = LongestName(pieces) + 1;
    int id = kFirstResourceId;
    for (const SkinPiece& p : pieces) text += "#define " + Padded(ResourceName(p.name), column) + std::to_string(id++) + "\n";
    return text;
}

std::string ResourceScriptText(const std::vector<SkinPiece>& pieces) {
    std::string text =
        "// The demo's default skin. Generated by zel-skin-gen; do not edit.\n"
        "#include \"resource.h\"\n\n";
    const size_t column = LongestName(pieces) + 1;
    for (const SkinPiece& p : pieces)
        text += Padded(ResourceName(p.name), column) + "BITMAP \"skin\\\\" + p.name + ".bmp\"\n";
    return text + "\n#include \"dialogs.rc2\"\n";
}

}  // namespace zel::demo
