// What the tests of the running demo share: a fresh desktop per test, and proof that the
// demo released every GDI object it created.
#pragma once

#include <afxwin.h>
#include <zel/desktop.h>

#include "support/leak_check.h"

namespace zel::demo {

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

}  // namespace zel::demo
