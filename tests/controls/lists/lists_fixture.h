// The list tests' fixture: the shared list fixture (a dialog item for CListData to
// subclass, the scroll bar's skin, a debug-line recorder) under this family's name.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>
#include <zel/debug.h>

#include "support/list_fixture.h"

namespace liststest {

using zel::test::kBarArrow;
using zel::test::kBarThumb;
using zel::test::kBarTrack;
using zel::test::kBarWidth;

class ListTest : public zel::test::ListFixture {};

}  // namespace liststest
