// What the tests of the running demo share: a fresh desktop per test, and proof that the
// demo released every GDI object it created.
#pragma once

#include <afxwin.h>
#include <zel/desktop.h>

#include <memory>

#include "host/demo_app.h"
#include "support/leak_check.h"

namespace zel::demo {

inline zel::Desktop& D() { return zel::Desktop::Get(); }

// The top-level window of the screen on show (the demo's host window).
inline HWND Host() {
    HWND h = ::WindowFromPoint(POINT{400, 300});
    while (HWND parent = ::GetParent(h)) h = parent;
    return h;
}

class DemoTest : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        zel::Desktop::Get().Reset();
        LeakChecked::SetUp();
    }
    void TearDown() override {
        zel::Desktop::Get().Reset();
        CWnd::DeleteTempMap();
        LeakChecked::TearDown();
    }
};

// The same with the demo application made on the default skin.
class DemoAppTest : public DemoTest {
protected:
    void SetUp() override {
        DemoTest::SetUp();
        app = std::make_unique<DemoApp>();
        ASSERT_TRUE(app->LoadSkin(ZEL_DEMO_SKIN_DIR));
    }
    void TearDown() override {
        app.reset();
        DemoTest::TearDown();
    }
    std::unique_ptr<DemoApp> app;
};

}  // namespace zel::demo
