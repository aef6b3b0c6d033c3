// The buttons and the check box in the message storm: the auto-repeating push button with
// its caption strip, the shaped bitmap button, the bitmap text button and the check box.
#include "CBmpTextButton.h"
#include "CZELBmpButton.h"
#include "CZELButton.h"
#include "CZELChkBox.h"
#include "storm_family.h"

namespace {

using namespace storm;

class CheckBox : public CZELChkBox {
public:
    bool CheckIsBoolean() const { return m_bChecked == 0 || m_bChecked == 1; }
};

constexpr DWORD kVisibleChild = WS_CHILD | WS_VISIBLE;

// The creator of a class that creates as a BUTTON does (caption, style, rectangle, parent,
// identifier).
template <class T>
auto ButtonCreator(const wchar_t* caption, DWORD style) {
    return [caption, style](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<T>(w).Create(caption, kVisibleChild | style, rc, &host, id);
    };
}

StormControl RepeatButton() {
    StormControl c = MakeControl<CZELButton>(kRepeatButton, "repeat button", {10, 10, 88, 107});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<CZELButton>(w).Create(L"Repeat", kVisibleChild | BS_OWNERDRAW, rc, &host, id, true);
        As<CZELButton>(w).SetAutoClick(true);
    };
    c.skin = [](CWnd& w) { As<CZELButton>(w).LoadSkin(JoinSkin({kBtnNormal, kBtnFocus, kBtnDown, kBtnDisable}), L""); };
    c.loadSkin = SkinLoader<CZELButton>();
    c.calls = {
        Call<CZELButton>([](CZELButton& b, ScriptReader& in) { b.SetAutoClick(in.U8() & 1); }),
        Call<CZELButton>([](CZELButton& b, ScriptReader& in) { b.InvalidateRect(nullptr, in.U8() & 1); }),
        Call<CZELButton>([](CZELButton& b, ScriptReader& in) {
            const UINT a = ReadId(in), bb = ReadId(in), cc = ReadId(in);
            b.LoadBitmaps(a, bb, cc, ReadModule(in));
        }),
        // The four paths as a careless host cuts them from a skin string (untrimmed; the
        // whole string for each one it lacks).
        Call<CZELButton>([](CZELButton& b, ScriptReader& in) {
            const CString skin = ReadSkinString(in);
            CStringArray pieces;
            for (int i = 0, start = 0, bar; (bar = skin.Find(L'|', start)) >= 0 && i < 4; ++i, start = bar + 1)
                pieces.Add(skin.Mid(start, bar - start));
            while (pieces.GetSize() < 4) pieces.Add(skin);
            b.LoadBitmaps(pieces[0], pieces[1], pieces[2], pieces[3]);
        }),
    };
    // The class redeclares these; a host calling them through the class gets its forms.
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<CZELButton>(w).MoveWindow(m.rect, m.repaint);
        else
            As<CZELButton>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
    c.show = [](CWnd& w, int command) { As<CZELButton>(w).ShowWindow(command); };
    c.enable = [](CWnd& w, BOOL enable) { As<CZELButton>(w).EnableWindow(enable); };
    c.setText = [](CWnd& w, const CString& text) { As<CZELButton>(w).SetWindowTextW(text); };
    return c;
}

StormControl ShapedButton() {
    StormControl c = MakeControl<CZELBmpButton>(kShapedButton, "shaped button", {100, 10, 140, 50});
    c.create = ButtonCreator<CZELBmpButton>(L"", BS_OWNERDRAW);
    c.skin = [](CWnd& w) {
        As<CZELBmpButton>(w).LoadBitmaps(kRound + 1, kRoundDown + 1, kRoundDown + 1, kAllKey + 1, Skins().module);
    };
    c.calls = {
        Call<CZELBmpButton>([](CZELBmpButton& b, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            const UINT a = ReadId(in), bb = ReadId(in), cc = ReadId(in), d = ReadId(in);
            b.LoadBitmaps(a, bb, cc, d, module);
        }),
    };
    return c;
}

StormControl TextButton() {
    StormControl c = MakeControl<CBmpTextButton>(kTextButton, "text button", {150, 10, 250, 40});
    c.create = ButtonCreator<CBmpTextButton>(L"Text", BS_PUSHBUTTON);
    c.skin = [](CWnd& w) {
        As<CBmpTextButton>(w).LoadBitmaps(kBtnNormal + 1, kBtnFocus + 1, kBtnDown + 1, Skins().module);
    };
    c.calls = {
        Call<CBmpTextButton>([](CBmpTextButton& b, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            const UINT a = ReadId(in), bb = ReadId(in), cc = ReadId(in);
            b.LoadBitmaps(a, bb, cc, module);
        }),
        Call<CBmpTextButton>([](CBmpTextButton& b, ScriptReader& in) {
            const int normal = ReadHeight(in), active = ReadHeight(in);
            const DWORD a = static_cast<DWORD>(in.I32());
            b.SetFont(normal, active, a, static_cast<DWORD>(in.I32()));
        }),
        Call<CBmpTextButton>([](CBmpTextButton& b, ScriptReader&) { b.DrawItem(nullptr); }),  // a host painting by hand
    };
    c.move = [](CWnd& w, const StormMove& m) {
        CRect r = m.rect;
        if (m.asRect)
            As<CBmpTextButton>(w).MoveWindow(r, m.repaint);
        else
            As<CBmpTextButton>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
    c.show = [](CWnd& w, int command) { As<CBmpTextButton>(w).ShowWindow(command); };
    return c;
}

StormControl CheckBoxControl() {
    StormControl c = MakeControl<CheckBox>(kCheckBox, "check box", {150, 50, 300, 80});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<CheckBox>(w).Create(nullptr, L"Check me", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) { As<CheckBox>(w).LoadSkin(JoinSkin({kChkOn, kChkOff, kChkBack}), L""); };
    c.loadSkin = SkinLoader<CheckBox>();
    c.calls = {
        Call<CheckBox>([](CheckBox& b, ScriptReader& in) {
            b.SetCheck(static_cast<int>(ReadValue(in)));
            b.SetAutoClick(in.U8() & 1);
            (void)b.GetCheck();
        }),
        Call<CheckBox>([](CheckBox& b, ScriptReader& in) {
            const int height = ReadHeight(in);
            const CString face = FromUtf8(in.Text());
            b.SetFont(height, face, static_cast<DWORD>(in.I32()));
        }),
    };
    c.invariants = {Promise<CheckBox>("the check box is neither checked nor unchecked", &CheckBox::CheckIsBoolean)};
    return c;
}

}  // namespace

STORM_FAMILY("buttons", RepeatButton(), ShapedButton(), TextButton(), CheckBoxControl());
