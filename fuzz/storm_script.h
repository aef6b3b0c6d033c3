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

// What the host holds, in creation order.
enum Control : uint8_t {
    kRepeatButton,  // CZELButton with auto-repeat and a caption strip
    kShapedButton,  // CZELBmpButton, resource skins
    kTextButton,    // CBmpTextButton, resource skins
    kCheckBox,      // CZELChkBox
    kScrollBar,     // CZELScrollbar
    kSlider,        // CZELSlider, nine-piece skin
    kVSlider,       // CZELSlider, vertical
    kProgress,      // CZELSlider, progress style
    kControlCount
};

enum Op : uint8_t {
    kPointerDown,   // point
    kPointerMove,   // point
    kPointerUp,     // point
    kTap,           // point
    kKey,           // key index, flags (1 = also release, 2 = press twice)
    kAdvance,       // u16 (ms = value % 2001)
    kFocus,         // control
    kScrollCall,    // what, values...
    kSliderCall,    // slider (0..2), what, values...
    kLoadSkin,      // control, skin string
    kResourceSkin,  // control, module choice, identifiers...
    kCheck,         // value, auto-click flag
    kEnable,        // control, flag
    kShow,          // control, command
    kMove,          // control, x, y, width, height, repaint
    kFont,          // which, heights, colours
    kDestroy,       // control (kControlCount = the host)
    kRecreate,      // control (kControlCount = the host and every control)
    kArm,           // message, action, target, count
    kText,          // control, string
    kRawMessage,    // control, message, wParam, point
    kButtonCall,    // what, ...
    kOpCount
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
    kSetScrollPos,    // re-enters the scroll bar, which notifies again
    kMoveSender,
    kDisableSender,
    kHideSender,
    kReskinTarget,
    kResetRange,
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
