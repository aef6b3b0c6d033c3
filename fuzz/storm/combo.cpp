// The skinned combo box in the message storm: contents and selection changed under it
// with wild indices, the list opened and closed by call, tap, key and focus, and the
// promises of its two states checked after every step.
#include <algorithm>

#include "CZELComBox.h"
#include "storm_family.h"

namespace {

using namespace storm;

class Combo : public CZELComBox {
public:
    bool SelectionValid() const {
        const int sel = GetCurSel();
        return sel == CB_ERR || (sel >= 0 && sel < GetCount());
    }
    bool TopRowValid() const {
        const int top = GetTopIndex();
        return top >= 0 && top <= std::max(0, GetCount() - 1);  // among the items, as a list box's
    }
    // Closed, the window is the box again: closing put it back exactly where it stood when
    // the list opened (whatever the host did to it meanwhile), and the box fills the window.
    // (The list's rectangles may outlive a box destroyed while open; nothing reads them
    // while closed.)
    bool ClosedWindowIsTheBox() const {
        if (!::IsWindow(m_hWnd) || GetDroppedState()) return true;
        if (opened_) {
            // No move came since the list closed: the window must already stand there.
            opened_ = false;
            if (!::EqualRect(InParent(), &boxAtOpen_)) restoredElsewhere_ = true;
        }
        CRect client;
        ::GetClientRect(m_hWnd, &client);
        return !restoredElsewhere_ && m_rcBox.top == 0 && m_rcBox.bottom == client.bottom && m_rcBox.right == client.right;
    }
    bool ClosedBarHidden() const {
        return !::IsWindow(m_hWnd) || GetDroppedState() || !::IsWindow(m_ScrollBar.m_hWnd) ||
               !(::GetWindowLongW(m_ScrollBar.m_hWnd, GWL_STYLE) & WS_VISIBLE);
    }
    // Except between a press that closed the list and its release: the box keeps that
    // release from the window beneath, which never saw the press.
    bool ClosedHoldsNoCapture() const {
        if (!::IsWindow(m_hWnd) || GetDroppedState() || m_nDrag == kSwallowUp) return true;
        const HWND capture = ::GetCapture();
        return !capture || (capture != m_hWnd && capture != m_ScrollBar.m_hWnd);
    }

protected:
    // The box notes where it stands as it starts to grow, and where the first move after
    // it closes (the restore, which comes before the closing notifications) asks to put it.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_NCDESTROY) opened_ = false;
        if (message == WM_WINDOWPOSCHANGING && opened_ && !m_bDropped) {
            opened_ = false;
            const WINDOWPOS* pos = reinterpret_cast<const WINDOWPOS*>(lParam);
            if (pos && !(pos->flags & (SWP_NOMOVE | SWP_NOSIZE))) {
                const CRect target(pos->x, pos->y, pos->x + pos->cx, pos->y + pos->cy);
                if (!::EqualRect(&target, &boxAtOpen_)) restoredElsewhere_ = true;
            }
        }
        if (message == WM_WINDOWPOSCHANGING && m_bDropped && !opened_) {
            opened_ = true;
            boxAtOpen_ = InParent();
        }
        return CZELComBox::WindowProc(message, wParam, lParam);
    }

private:
    CRect InParent() const {
        CRect window;
        ::GetWindowRect(m_hWnd, &window);
        if (HWND parent = ::GetParent(m_hWnd)) ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&window), 2);
        return window;
    }
    mutable bool opened_ = false;
    CRect boxAtOpen_;
    mutable bool restoredElsewhere_ = false;
};

const CString& ComboSkin() {
    static const CString skin = JoinSkin({kSlLeft, kSlFill, kSlRight, kBarDown, kBarDownDown, kBtnNormal, kBtnFocus,
                                          kBarUp, kBarUpDown, kBarTrack, kBarThumb, kBarThumbDown, kBarDown,
                                          kBarDownDown});
    return skin;
}

// An item's text: the script's, empty, one far wider than the box, or none at all.
template <class F>
int WithText(ScriptReader& in, F f) {
    switch (in.Pick(4)) {
        case 0: return f(static_cast<LPCTSTR>(nullptr));
        case 1: return f(L"");
        case 2: return f(static_cast<LPCTSTR>(CString(L'W', 200) + L" item"));
        default: return f(static_cast<LPCTSTR>(FromUtf8(in.Text())));
    }
}

StormControl ComboControl() {
    StormControl c = MakeControl<Combo>(kCombo, "combo box", {150, 82, 310, 106});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        Combo& box = As<Combo>(w);
        box.Create(WS_CHILD | WS_VISIBLE, rc, &host, id);
        for (const wchar_t* item : {L"Alpha", L"Bravo", L"Charlie", L"Delta", L"Echo", L"Foxtrot", L"Golf"})
            box.AddString(item);
    };
    c.skin = [](CWnd& w) { As<Combo>(w).LoadSkin(ComboSkin(), L""); };
    c.loadSkin = SkinLoader<Combo>();
    c.calls = {
        Call<Combo>([](Combo& b, ScriptReader& in) { WithText(in, [&](LPCTSTR s) { return b.AddString(s); }); }),
        Call<Combo>([](Combo& b, ScriptReader& in) {
            const int index = static_cast<int>(ReadValue(in));
            WithText(in, [&](LPCTSTR s) { return b.InsertString(index, s); });
        }),
        Call<Combo>([](Combo& b, ScriptReader& in) { b.DeleteString(static_cast<UINT>(ReadValue(in))); }),
        Call<Combo>([](Combo& b, ScriptReader& in) { b.SetCurSel(static_cast<int>(in.U8() % 44) - 3); }),
        Call<Combo>([](Combo& b, ScriptReader& in) { b.SetDroppedHeight(static_cast<int>(in.U8() % 64) - 3); }),
        Call<Combo>([](Combo& b, ScriptReader& in) { b.ShowDropDown(in.U8() & 1); }),
        Call<Combo>([](Combo& b, ScriptReader&) { b.ResetContent(); }),
        Call<Combo>([](Combo& b, ScriptReader& in) {
            const int index = static_cast<int>(ReadValue(in));
            CString text;
            b.GetLBText(index, text);
            wchar_t buffer[512];
            if (b.GetLBTextLen(index) >= 0 && b.GetLBTextLen(index) < 512) b.GetLBText(index, buffer);
            b.SetItemData(index, static_cast<DWORD_PTR>(index));
            (void)b.GetItemData(index);
            (void)b.FindStringExact(index, L"delta");
            RECT dropped;
            b.GetDroppedControlRect(&dropped);
            (void)b.GetDroppedHeight();
        }),
    };
    c.invariants = {
        Promise<Combo>("the selection is neither CB_ERR nor an item", &Combo::SelectionValid),
        Promise<Combo>("the first visible row left the items", &Combo::TopRowValid),
        Promise<Combo>("closed, the window is not the box where the list opened from", &Combo::ClosedWindowIsTheBox),
        Promise<Combo>("closed, the scroll bar shows", &Combo::ClosedBarHidden),
        Promise<Combo>("closed, the box holds the capture", &Combo::ClosedHoldsNoCapture),
    };
    return c;
}

}  // namespace

STORM_FAMILY("combo", ComboControl());
