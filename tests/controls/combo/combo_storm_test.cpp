// A seeded storm over one combo box: taps, drags and keys anywhere, time, hostile calls,
// a parent that destroys the box inside a notification. After every step the box's
// promises hold; at the end the fixture proves every window and GDI object released.
#include <gtest/gtest.h>

#include <random>

#include "combo_fixture.h"

namespace {

using combotest::kId;

class ComboStorm : public combotest::ComboTest, public ::testing::WithParamInterface<unsigned> {
protected:
    // What the box promises whatever happened before.
    void CheckPromises(const char* after) {
        if (!ctl || !::IsWindow(ctl->m_hWnd)) return;
        const int count = ctl->GetCount(), sel = ctl->GetCurSel();
        EXPECT_TRUE(sel == CB_ERR || (sel >= 0 && sel < count)) << after << ": selection " << sel << " of " << count;
        EXPECT_GE(ctl->GetTopIndex(), 0) << after;
        EXPECT_LE(ctl->GetTopIndex(), std::max(0, count - 1)) << after;
        if (!ctl->GetDroppedState()) {
            EXPECT_EQ(WindowRect(), closed_) << after << ": a closed box has its own rectangle";
            EXPECT_FALSE(ctl->GetScrollBar()->IsWindowVisible()) << after;
            EXPECT_NE(CWnd::GetCapture(), ctl.get()) << after << ": a closed box holds no capture";
        } else {
            EXPECT_EQ(WindowRect().Width(), closed_.Width()) << after;
        }
    }

    void Remake(std::mt19937& rng) {
        const int top = std::uniform_int_distribution<int>(0, 440)(rng);
        closed_ = CRect(20, top, 220, top + 30);
        Make(closed_, std::uniform_int_distribution<int>(0, 30)(rng));
    }

    CRect closed_;
};

TEST_P(ComboStorm, PromisesHoldThroughAStorm) {
    std::mt19937 rng(GetParam());
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    Remake(rng);
    int killCode = 0;  // the parent destroys the box on this CBN_ code
    parent.onMessage = [&](UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_COMMAND && killCode && HIWORD(wParam) == killCode && ctl && ::IsWindow(ctl->m_hWnd))
            ctl->DestroyWindow();
    };
    static const UINT kKeys[] = {VK_UP, VK_DOWN, VK_RETURN, VK_ESCAPE, 0x73 /* F4 */, VK_LEFT};
    for (int step = 0; step < 400; ++step) {
        if (!::IsWindow(ctl->m_hWnd)) {
            killCode = 0;
            Remake(rng);
        }
        const char* op = "";
        switch (pick(0, 13)) {
            case 0: op = "tap"; desktop.Tap(pick(-50, 850), pick(-50, 530)); break;
            case 1: op = "tap box"; desktop.Tap(pick(20, 219), closed_.top + pick(0, 29)); break;
            case 2:
                op = "drag";
                desktop.PointerDown(pick(0, 799), pick(0, 479));
                desktop.PointerMove(pick(-20, 820), pick(-20, 500));
                desktop.Advance(pick(0, 450));
                desktop.PointerUp(pick(0, 799), pick(0, 479));
                break;
            case 3: op = "key"; ctl->SetFocus(); Press(kKeys[pick(0, 5)]); break;
            case 4: op = "time"; desktop.Advance(pick(0, 1000)); break;
            case 5: op = "add"; ctl->AddString(L"storm"); break;
            case 6: op = "insert"; ctl->InsertString(pick(-3, 40), L"inserted"); break;
            case 7: op = "delete"; ctl->DeleteString(static_cast<UINT>(pick(-2, 40))); break;
            case 8: op = "select"; ctl->SetCurSel(pick(-3, 40)); break;
            case 9: op = "rows"; ctl->SetDroppedHeight(pick(-3, 60)); break;
            case 10: op = "show"; ctl->ShowDropDown(pick(0, 1)); break;
            case 11:
                op = "skin";
                ctl->LoadSkin(pick(0, 1) ? BoxSkin() + L"/no/such.bmp|" : CString(L" | |junk"), L"");
                break;
            case 12: op = "reset"; ctl->ResetContent(); break;
            case 13: op = "arm"; killCode = pick(CBN_SELCHANGE, CBN_SELENDCANCEL); break;
        }
        desktop.RunUntilIdle();
        CheckPromises(op);
        if (HasFailure()) {
            ADD_FAILURE() << "seed " << GetParam() << " step " << step << " (" << op << ")";
            break;
        }
    }
    parent.onMessage = nullptr;
}

INSTANTIATE_TEST_SUITE_P(Seeds, ComboStorm, ::testing::Values(1u, 2u, 3u, 4u));

}  // namespace
