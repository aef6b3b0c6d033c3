// The byte language of fuzz_message_storm, shared with the seed writer so seeds are real
// scripts. An input is a sequence of operations; each is one opcode byte followed by its
// arguments, read front to back. A reader past the end reads zeros, so every byte string
// is a valid script.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace storm {

// The skin files the fuzzers generate (skin_files.h), by index; seeds name files by these.
enum SkinFile : uint8_t {
    kBtnNormal, kBtnFocus, kBtnDown, kBtnDisable,
    kChkOn, kChkOff, kChkBack,
    kBarUp, kBarUpDown, kBarTrack, kBarThumb, kBarThumbDown, kBarDown, kBarDownDown,
    kSlLeft, kSlRight, kSlThumb, kSlThumbUp, kSlThumbDown, kSlFill, kSlChannel, kSlChanLeft, kSlChanRight,
    kProgBack, kProgFill,
    kRound, kRoundDown, kAllKey, kTiny, kWide,
    kDrawnCount,
    kMissing = kDrawnCount, kMalformed, kEmptyFile, kFolder, kEmptyPath,
    kFileCount
};

// The host's controls, one slot each, in creation order. A family claims its slots here
// (before kControlCount) and registers what fills them (storm_family.h); seeds name
// controls by these.
enum Control : uint8_t {
    kRepeatButton,  // CZELButton with auto-repeat and a caption strip
    kShapedButton,  // CZELBmpButton, resource skins
    kTextButton,    // CBmpTextButton, resource skins
    kCheckBox,      // CZELChkBox
    kScrollBar,     // CZELScrollbar
    kSlider,        // CZELSlider, nine-piece skin
    kVSlider,       // CZELSlider, vertical
    kProgress,      // CZELSlider, progress style
    kPicker,        // CDataTimectrl made with CWnd::Create
    kPickerSub,     // CDataTimectrl over a plain child (SubclassWindow)
    kTimeField,     // CTimeData made with CWnd::Create
    kTimeFieldSub,  // CTimeData over a plain child, with a resource skin
    kSpinner,       // CZELDate
    kTimeDate,      // CZELTimeDate with its three spinners
    kLabel,         // CZELLable
    kTelLcd,        // CZELTelLCD
    kBkLabel,       // CZELBkLable
    kPicture,       // CZELStatic on a STATIC window
    kCombo,         // CZELComBox
    kPlayList,      // CZELPlayList
    kTelList,       // CZELTelList, two image sets
    kBTList,        // CZELBTList
    kFileList,      // CBbgFileList, resource skins
    kListCtrl,      // CZELListCtrl, three columns
    kListData,      // CListData over a plain child, two columns, drawn by a probe
    kNameList,      // CZELList, style 1
    kTimeList,      // CZELList, style 3
    kControlCount
};

// Operations every control takes. What only some classes have (their own API, resource
// skins, fonts) is a kCall of the control's family.
enum Op : uint8_t {
    kPointerDown,   // point
    kPointerMove,   // point
    kPointerUp,     // point
    kTap,           // point
    kKey,           // key index, flags (1 = also release, 2 = press twice)
    kAdvance,       // u16 (ms = value % 2001)
    kFocus,         // control
    kCall,          // control, call (modulo the control's count of calls), the call's arguments
    kLoadSkin,      // control, skin string, reserved flag
    kEnable,        // control, flag
    kShow,          // control, command
    kMove,          // control, x, y, width, height, repaint, as-rectangle flag
    kDestroy,       // control (kControlCount = the host)
    kRecreate,      // control (kControlCount = the host and every control), elsewhere flag, [rectangle]
    kArm,           // trigger, reaction, target, count, value, call, call arguments (text)
    kText,          // control, string, widen flag, [width]
    kRawMessage,    // control, x, y, message, argument
    kPaint,         // nothing: the loop runs with its paints (they are held between these)
    kOpCount
};

// The calls of each control, by index: kCall's second byte. Arguments as noted, values
// read as "extreme" values (kRawValue and a 64-bit value, or a pick of the fuzzer's table).
enum RepeatButtonCall : uint8_t {
    kButtonAutoClick,    // flag
    kButtonInvalidate,   // erase flag
    kButtonResourceIds,  // 3 identifiers, module (a no-op for this class)
    kButtonPaths,        // skin string, cut at "|" into the four path arguments
    kRepeatButtonCalls
};
enum ShapedButtonCall : uint8_t {
    kShapedResources,    // module, 4 identifiers
    kShapedButtonCalls
};
enum TextButtonCall : uint8_t {
    kTextResources,      // module, 3 identifiers
    kTextFont,           // 2 heights, 2 colours (i32)
    kTextPaintByHand,    // DrawItem(NULL)
    kTextButtonCalls
};
enum CheckBoxCall : uint8_t {
    kCheckSet,           // value, auto-click flag
    kCheckFont,          // height, face (text), colour (i32)
    kCheckBoxCalls
};
enum ScrollBarCall : uint8_t {
    kBarRange,           // 2 values
    kBarPos,             // value, redraw flag
    kBarInfo,            // mask flag, 5 values, pass-the-structure flag, redraw flag
    kBarPage,            // value
    kBarLine,            // value
    kBarMove,            // 4 coordinates, repaint flag
    kBarQuery,           // 2 flags
    kBarResources,       // module, 7 identifiers
    kScrollBarCalls
};
enum SliderCall : uint8_t {
    kSliderRange,        // 2 values, redraw flag
    kSliderPos,          // value
    kSliderPage,         // value
    kSliderLine,         // value
    kSliderLineLeft,
    kSliderLineRight,
    kSliderLineUp,
    kSliderLinedown,
    kSliderLeftPage,
    kSliderRightpage,
    kSliderChannel,      // 2 values
    kSliderStyle,        // pick of -1..2
    kSliderVertical,     // flag
    kSliderMoveStyle,    // flag
    kSliderQuery,
    kSliderResources,    // module, 9 identifiers, missing-arrays bits
    kSliderProgressResources,  // module, 2 identifiers
    kSliderCalls
};
// CDataTimectrl and CTimeData (the four picker slots); the field calls do nothing for a
// plain picker.
enum PickerCall : uint8_t {
    kPickerSetTime,      // 8 u16 fields, null flag
    kPickerStyle,        // value
    kPickerAutoUpdate,   // flag
    kPickerKeys,         // count, then that many key bytes (0 left, 1 right, 2 up, 3 down)
    kPickerGetTime,      // null flag
    kPickerFieldSkin,    // good/missing flag, module
    kPickerFieldEdit,    // Add, Def, Setcur(value, value)
    kPickerCalls
};
// CZELDate.
enum SpinnerCall : uint8_t {
    kSpinRange,          // 2 values
    kSpinPos,            // value
    kSpinCurValue,       // value
    kSpinInsert,         // text ("" as well)
    kSpinVStyle,         // flag
    kSpinAdd,
    kSpinDef,
    kSpinQuery,
    kSpinSkin,           // folder flag, count of names (0..12)
    kSpinnerCalls
};
// CZELTimeDate.
enum TimeDateCall : uint8_t {
    kTdSetTime,          // 8 u16 fields
    kTdStyle,            // value
    kTdGetTime,          // null flag
    kTdMoveCtrls,
    kTdStepOne,          // which spinner (0..2), up flag: a step as its button makes it
    kTdSkin,             // folder flag, count of names (0..13)
    kTimeDateCalls
};
// CZELLable and CZELTelLCD (the display takes the label's calls first).
enum LabelCall : uint8_t {
    kLabelFont,          // height, colour (i32), format (i32), 4 coordinates
    kLabelBitmaps,       // skin string, cut at "|" into the three paths
    kLabelText,          // text, then Invalidate
    kLabelCalls,
    kLcdInitIds = kLabelCalls,  // null bits, 3 identifiers, 2 colours, 2 heights, mode value, module
    kLcdInitFiles,       // frame count, indicator count, 2 colours, 2 heights, mode value
    kLcdTime,            // text
    kTelLcdCalls
};
// CZELBkLable and CZELStatic.
enum BitmapLabelCall : uint8_t {
    kBitmapSet,          // which bitmap: 0 null, 1 stale, 2 monochrome, 3 all key, 4 colour, 5 wide
    kBitmapFont,         // CZELBkLable only: height, colour, format, 4 coordinates
    kBitmapText,         // text, then Invalidate
    kBitmapLabelCalls
};
// CZELComBox.
enum ComboCall : uint8_t {
    kComboAdd,           // text (empty, long, or null for a zero length and flag)
    kComboInsert,        // index value, text
    kComboDelete,        // index value
    kComboSetCurSel,     // byte: -3..40
    kComboDroppedHeight, // byte: -3..60
    kComboShowDropDown,  // flag
    kComboReset,
    kComboQuery,         // index value
    kComboCalls
};

// The special lists' calls. Row and column indexes are "extreme" values; texts are read
// as UTF-8 text.
enum ListDataCall : uint8_t {  // the calls every list on CListData takes first
    kListInsert,         // value (index), text
    kListSetText,        // 2 values (row, cell), text
    kListDelete,         // value
    kListDeleteAll,
    kListCurSel,         // value
    kListMark,           // value (SetSelectionMark)
    kListScrollTo,       // value
    kListColumn,         // flag (insert / delete), value, text
    kListScrollSkin,     // skin string (the bar's two-string form)
    kListDataCalls
};
enum PlayListCall : uint8_t {
    kPlayLoadBitmaps = kListDataCalls,  // 3 counts, then that many file indexes per array
    kPlayListCalls
};
enum TelListCall : uint8_t {
    kTelAddImage = kListDataCalls,  // 2 counts, file indexes
    kTelClearImages,
    kTelAddItem,                    // count, texts, value (image)
    kTelSetImage,                   // 2 values: a row's image index as the host's data may hold it
    kTelListCalls
};
enum BTListCall : uint8_t {
    kBTLoadBitmaps = kListDataCalls,  // 4 counts, file indexes
    kBTLookup,                        // flag (name / state), text
    kBTListCalls
};
enum FileListCall : uint8_t {
    kFileInsert,         // value, text, value
    kFileDeleteAll,
    kFileCurSel,         // value
    kFileMark,           // value (SetSelectionMark, unchecked)
    kFileItemState,      // value (unsigned), value
    kFileStyle,          // value
    kFileScrollTo,       // value
    kFileColumnWidth,    // value
    kFileResources,      // module, 2 identifiers
    kFileBarResources,   // module, 7 identifiers
    kFileQuery,          // value (GetNextSelectedItemIndex start)
    kFileListCalls
};
enum ListCtrlCall : uint8_t {
    kCtrlInsertColumn = kListDataCalls,  // value, text, value (format), value (width)
    kCtrlColumnWidth,                    // 2 values
    kCtrlEnsureVisible,                  // value, flag
    kCtrlListCalls
};
// CListData itself and CZELList: the row and column calls both take, then each one's own.
enum PlainListCall : uint8_t {
    kPlainInsertStruct,  // null flag, value (row), value (sub-item), text, value (image)
    kPlainInsertText,    // value, text (CListData: update flag first)
    kPlainInsertImage,   // value, text, value (image)
    kPlainSetText,       // 2 values (row, cell), text
    kPlainGetText,       // 2 values (row, cell)
    kPlainDelete,        // value
    kPlainDeleteAll,
    kPlainColumnStruct,  // null flag, value (position), text, value (width)
    kPlainColumn,        // value (position), text, value (width): cuts the rows of a filled list
    kPlainDeleteColumn,  // value
    kPlainCurSel,        // value
    kPlainMark,          // value (SetSelectionMark)
    kPlainScrollTo,      // value
    kPlainListCalls
};
enum ListDataCallOwn : uint8_t {
    kDataBkImage = kPlainListCalls,  // count (0..5), file indexes
    kDataScrollSkin,                 // skin string (the bar's two-string form)
    kListDataProbeCalls
};
enum ZelListCall : uint8_t {
    kZelAddItem = kPlainListCalls,   // count (0..4), texts, value (image)
    kZelStyle,                       // byte: -1..4
    kZelItemHeight,                  // value
    kZelListCalls
};

// Point targets: a control's window rectangle with 8 pixels around it, the whole plane,
// or the host's window.
inline constexpr uint8_t kAnywhere = kControlCount;
inline constexpr uint8_t kOnHost = kControlCount + 1;

// Values for "extreme" arguments: the byte picks one, or 0xFF reads a raw 64-bit value.
inline constexpr uint8_t kRawValue = 0xFF;

// Pieces of a skin string: the byte picks one of the files the fuzzer generated (by
// index), a separator, whitespace, or literal text that follows.
enum SkinToken : uint8_t {
    kTokenFile,        // + file index
    kTokenBar,         // "|"
    kTokenSpace,       // " \t"
    kTokenText,        // + length byte + that many UTF-8 bytes
    kTokenWide,        // + length byte + that many 32-bit code units (any value but NUL)
    kTokenLong,        // + length byte: a path of 64 x that many characters
    kTokenEnd,
    kTokenCount
};

// The notification messages an armed reaction can wait for.
enum Trigger : uint8_t { kOnCommand, kOnVScroll, kOnHScroll, kOnLButtonDown, kOnLButtonUp, kOnAny, kTriggerCount };

// What the host does from inside a notification.
enum Reaction : uint8_t {
    kDestroySender,
    kDestroyTarget,
    kDestroyHost,
    kCallTarget,      // one of the target's calls (re-entering a scroll bar notifies again)
    kMoveSender,
    kDisableSender,
    kHideSender,
    kReskinTarget,
    kFocusTarget,
    kPump,            // a nested message loop, as a modal box would run
    kReactionCount
};

class ScriptWriter {
public:
    ScriptWriter& Op(uint8_t op) { return U8(op); }
    ScriptWriter& U8(uint8_t v) {
        bytes_.push_back(v);
        return *this;
    }
    ScriptWriter& U16(uint16_t v) { return U8(v & 0xFF).U8(v >> 8); }
    ScriptWriter& I32(int32_t v) {
        for (int i = 0; i < 4; ++i) U8(static_cast<uint8_t>(static_cast<uint32_t>(v) >> (8 * i)));
        return *this;
    }
    ScriptWriter& I64(int64_t v) {
        for (int i = 0; i < 8; ++i) U8(static_cast<uint8_t>(static_cast<uint64_t>(v) >> (8 * i)));
        return *this;
    }
    ScriptWriter& Text(const std::string& utf8) {
        U8(static_cast<uint8_t>(utf8.size()));
        for (unsigned char c : utf8.substr(0, 255)) U8(c);
        return *this;
    }
    // A point `fx`/255 across and `fy`/255 down a control's rectangle (with its margin).
    ScriptWriter& At(uint8_t target, uint8_t fx, uint8_t fy) { return U8(target).U8(fx).U8(fy); }
    const std::vector<uint8_t>& Bytes() const { return bytes_; }

private:
    std::vector<uint8_t> bytes_;
};

class ScriptReader {
public:
    ScriptReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}
    bool Done() const { return at_ >= size_; }
    uint8_t U8() { return at_ < size_ ? data_[at_++] : 0; }
    uint16_t U16() {
        uint16_t lo = U8();
        return static_cast<uint16_t>(lo | (U8() << 8));
    }
    int32_t I32() {
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i) v |= static_cast<uint32_t>(U8()) << (8 * i);
        return static_cast<int32_t>(v);
    }
    int64_t I64() {
        uint64_t v = 0;
        for (int i = 0; i < 8; ++i) v |= static_cast<uint64_t>(U8()) << (8 * i);
        return static_cast<int64_t>(v);
    }
    uint8_t Pick(uint8_t n) { return static_cast<uint8_t>(U8() % n); }
    std::string Text() {
        std::string s;
        for (uint8_t n = U8(); n && !Done(); --n) s.push_back(static_cast<char>(U8()));
        return s;
    }

private:
    const uint8_t* data_;
    size_t size_;
    size_t at_ = 0;
};

}  // namespace storm
