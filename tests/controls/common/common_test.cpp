// The common base of the controls: skin strings and sets, the transparent blit, the
// off-screen canvas and the three-piece frame, parent notifications, text helpers and
// row geometry.
#include <afxwin.h>
#include <commctrl.h>
#include <zel/desktop.h>
#include <zel/gdi_extras.h>

#include <climits>
#include <string>

#include "DateMath.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "RowGeometry.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "SkinText.h"
#include "StrokeDigits.h"
#include "ThreePiece.h"
#include "TransparentBlit.h"
#include "support/leak_check.h"
#include "support/memory_surface.h"
#include "support/skin_folder.h"

namespace {

std::vector<std::wstring> Split(const std::wstring& skin) {
    CStringArray pieces;
    pieces.Add(L"left over");  // a split replaces what the list held
    zelctl::SplitSkinList(CString(skin.data(), static_cast<int>(skin.size())), pieces);
    std::vector<std::wstring> out;
    for (INT_PTR i = 0; i < pieces.GetSize(); ++i)
        out.emplace_back(pieces[i].GetString(), static_cast<size_t>(pieces[i].GetLength()));
    return out;
}

// Each piece ends at a bar, trimmed of what CString trims; the tail after the last bar is
// dropped.
TEST(SkinList, PiecesBeforeEachBarAreTrimmedAndTheTailIsDropped) {
    using V = std::vector<std::wstring>;
    const struct {
        const char* what;
        std::wstring skin;
        V pieces;
    } cases[] = {
        {"two pieces", L" a.bmp |\tb.bmp|", {L"a.bmp", L"b.bmp"}},
        {"no closing bar: the last path is not taken", L"a.bmp|b.bmp", {L"a.bmp"}},
        {"no bar", L"a.bmp", {}},
        {"nothing", L"", {}},
        {"empty pieces keep their places", L"||x|", {L"", L"", L"x"}},
        {"space, tab, LF, VT, FF and CR go", L" \t\n\v\f\ra.bmp\r\f\v\n\t |", {L"a.bmp"}},
        {"white space inside stays", L" a b.bmp |", {L"a b.bmp"}},
        {"a piece of white space is empty", L" \t |\r\n|", {L"", L""}},
        {"no-break and ideographic spaces are not trimmed", L"\u00A0a\u3000|", {L"\u00A0a\u3000"}},
        {"a NUL is a character like any other", std::wstring(L"a\0b|\0|", 6), {std::wstring(L"a\0b", 3), std::wstring(1, L'\0')}},
    };
    for (const auto& c : cases) EXPECT_EQ(Split(c.skin), c.pieces) << c.what;
}

TEST(SkinList, ThousandsOfPiecesEachInItsPlace) {
    std::wstring skin;
    for (int i = 0; i < 5000; ++i) skin += std::to_wstring(i) + L" |";
    skin += std::wstring(5000, L'x') + L"|";
    const std::vector<std::wstring> pieces = Split(skin);
    ASSERT_EQ(pieces.size(), 5001u);
    for (int i = 0; i < 5000; ++i) ASSERT_EQ(pieces[static_cast<size_t>(i)], std::to_wstring(i)) << i;
    EXPECT_EQ(pieces.back(), std::wstring(5000, L'x'));
}

class TransparentBlitTest : public zel::test::LeakChecked {};

TEST_F(TransparentBlitTest, KeyPixelsKeepTheDestination) {
    zel::test::MemorySurface dstSurface(6, 3, false), srcSurface(2, 1, false);
    HDC dst = dstSurface.dc(), src = srcSurface.dc();
    const COLORREF bg = RGB(0xAA, 0xAA, 0xAA), key = RGB(255, 0, 255), ink = RGB(10, 200, 30);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 6; ++x) SetPixel(dst, x, y, bg);
    SetPixel(src, 0, 0, key);
    SetPixel(src, 1, 0, ink);

    zelctl::TransparentBlit(dst, 1, 1, 4, 1, src, 0, 0, 2, 1, key);  // stretched 2x
    const COLORREF row1[6] = {bg, bg, bg, ink, ink, bg};
    for (int x = 0; x < 6; ++x) {
        EXPECT_EQ(GetPixel(dst, x, 0), bg) << x;
        EXPECT_EQ(GetPixel(dst, x, 1), row1[x]) << x;
        EXPECT_EQ(GetPixel(dst, x, 2), bg) << x;
    }
    EXPECT_EQ(GetTextColor(dst), RGB(0, 0, 0));
}


// ---- skin sets ------------------------------------------------------------------------------

// Solid-colour .bmp files in a folder of their own.
class SkinSetTest : public zel::test::LeakChecked {
protected:
    CString Solid(const char* name, int w, int h, COLORREF colour) {
        return CString(skins_.Solid(name, w, h, colour).c_str());
    }
    static std::string Widths(const zelctl::SkinSet& set) {
        std::string out;
        for (size_t i = 0; i < set.size(); ++i) out += std::to_string(set.Size(i).cx) + " ";
        return out;
    }
    zel::test::SkinFolder skins_;
};

TEST_F(SkinSetTest, SkinStringsFollowTheMissingPiecePolicy) {
    const CString a = Solid("a", 1, 1, RGB(1, 0, 0)), b = Solid("b", 2, 1, RGB(2, 0, 0));
    struct Case {
        CString skin;
        zelctl::MissingPiece missing;
        int named;
        const char* widths;
    } cases[] = {
        {a + L"|" + b + L"|", zelctl::MissingPiece::RepeatFirst, 2, "1 2 1 1 "},
        {a + L"|" + b + L"|", zelctl::MissingPiece::Empty, 2, "1 2 0 0 "},
        {a + L" | " + b, zelctl::MissingPiece::RepeatFirst, 1, "1 1 1 1 "},
        {L"|missing.bmp|", zelctl::MissingPiece::Empty, 2, "0 0 0 0 "},
    };
    for (const Case& c : cases) {
        zelctl::SkinSet set(4);
        set.LoadFiles({b, b, b, b});
        EXPECT_EQ(set.LoadSkinString(c.skin, c.missing), c.named);
        EXPECT_EQ(Widths(set), c.widths) << static_cast<LPCWSTR>(c.skin);
    }
    zelctl::SkinSet set(2);
    set.LoadFiles({a, b});
    EXPECT_EQ(set.LoadSkinString(a, zelctl::MissingPiece::RepeatFirst), 0) << "no bar: nothing taken";
    EXPECT_EQ(Widths(set), "1 2 ") << "the old skin stays";
}

// Every load replaces; a host that passes no array, and a piece detached, are handled; the
// set releases what it holds (the fixture counts).
TEST_F(SkinSetTest, EveryLoadReplacesAndTheSetReleasesWhatItHolds) {
    const CString a = Solid("a", 3, 2, RGB(9, 9, 9));
    const long before = zel::LiveGdiObjects().bitmaps;
    zelctl::SkinSet set(3);
    set.LoadFiles({a, L"", L"nope.bmp"});
    EXPECT_EQ(Widths(set), "3 0 0 ");
    set.LoadFiles({a, a}, 1);
    set.LoadFiles({a, a, a});
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before + 3);
    set.Set(7, set[0] ? CreateBitmap(1, 1, 1, 1, nullptr) : nullptr);  // outside: deleted, not leaked
    EXPECT_EQ(set[7], nullptr);
    EXPECT_EQ(set.Size(0).cy, 2);

    set.LoadIds(nullptr, 2, nullptr, 1);  // a host that passes no array
    EXPECT_EQ(Widths(set), "3 0 0 ");
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before + 1);

    HBITMAP taken = set.Detach(0);
    EXPECT_EQ(set[0], nullptr);
    EXPECT_EQ(set.Detach(9), nullptr);
    set.ReleaseAll();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before + 1) << "a detached piece is the caller's";
    EXPECT_TRUE(DeleteObject(taken));
    set.LoadFiles({a, a, a});  // for the destructor to release
}

TEST(SkinList, PathsThroughAFixedBufferAreCut) {
    const CString longPath(L'p', MAX_PATH + 40);
    struct Case {
        CString path;
        int capacity, length;
    } cases[] = {
        {L"a.bmp", MAX_PATH, 5},
        {longPath.Left(MAX_PATH - 1), MAX_PATH, MAX_PATH - 1},
        {longPath.Left(MAX_PATH), MAX_PATH, MAX_PATH - 1},
        {longPath, MAX_PATH, MAX_PATH - 1},
        {L"abc", 1, 0},
        {L"abc", 0, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(zelctl::PathInBuffer(c.path, c.capacity).GetLength(), c.length) << c.path.GetLength();
}

// ---- canvas and frames ----------------------------------------------------------------------

// A bitmap-backed DC standing for a paint DC, filled with one colour.
class TargetDC : public zel::test::MemorySurface {
public:
    TargetDC(int w, int h, COLORREF fill) : MemorySurface(w, h, false) { zel::test::FillBox(dc(), 0, 0, w, h, fill); }
    operator HDC() const { return dc(); }
};

TEST_F(SkinSetTest, APieceIsPresentedStraightAtTheCanvasSize) {
    const COLORREF bg = RGB(1, 2, 3), M = RGB(0, 200, 0);
    zelctl::SkinSet set(1);
    set.LoadFiles({Solid("m", 2, 2, M)});
    TargetDC target(4, 4, bg);
    {
        zelctl::OffscreenCanvas canvas(target, 3, 1);
        canvas.PresentPiece(set[0]);
        canvas.PresentPiece(nullptr);  // nothing loaded: nothing drawn
    }
    const COLORREF row0[4] = {M, M, bg, bg};  // beyond the piece the target stays; beyond the canvas too
    for (int x = 0; x < 4; ++x) EXPECT_EQ(GetPixel(target, x, 0), row0[x]) << x;
    EXPECT_EQ(GetPixel(target, 0, 1), bg) << "only the canvas's height";
}

TEST_F(SkinSetTest, AFixedCapLengthOverridesTheCapBitmaps) {
    const COLORREF bg = RGB(1, 2, 3), L = RGB(200, 0, 0), M = RGB(0, 200, 0), R = RGB(0, 0, 200);
    zelctl::SkinSet set(3);
    set.LoadFiles({Solid("l", 1, 1, L), Solid("m", 1, 1, M), Solid("r", 1, 3, R)});
    TargetDC screen(1, 1, bg);
    zelctl::OffscreenCanvas canvas(screen, 1, 9);
    canvas.Fill(RECT{0, 0, 1, 9}, bg);
    zelctl::ThreePieceStyle style;
    style.axis = zelctl::Axis::Vertical;
    style.capLength = 2;
    const RECT middle = zelctl::PaintThreePiece(canvas, RECT{0, 0, 1, 9}, {set[0], set[1], set[2]}, style);
    EXPECT_EQ(middle.top, 2);
    EXPECT_EQ(middle.bottom, 7);
    // The 1-pixel top cap fills one row of its 2; the 3-pixel bottom cap shows its top 2.
    const COLORREF column[9] = {L, bg, M, M, M, M, M, R, R};
    for (int y = 0; y < 9; ++y) EXPECT_EQ(GetPixel(canvas.dc(), 0, y), column[y]) << y;
}

TEST_F(SkinSetTest, ThreePieceFramesLayCapsAndMiddleAlongTheirAxis) {
    const COLORREF L = RGB(200, 0, 0), M = RGB(0, 200, 0), R = RGB(0, 0, 200);
    zelctl::SkinSet set(3);
    set.LoadFiles({Solid("l", 2, 1, L), Solid("m", 1, 1, M), Solid("r", 3, 1, R)});
    HDC screen = GetDC(nullptr);
    {
        zelctl::OffscreenCanvas canvas(screen, 10, 4);
        const RECT middle = zelctl::PaintThreePiece(canvas, RECT{0, 0, 10, 4}, {set[0], set[1], set[2]},
                                                    {zelctl::Axis::Horizontal, zelctl::CapFit::Stretch,
                                                     zelctl::MiddleFit::Tile});
        EXPECT_EQ(middle.left, 2);
        EXPECT_EQ(middle.right, 7);
        const COLORREF row[10] = {L, L, M, M, M, M, M, R, R, R};
        for (int x = 0; x < 10; ++x) EXPECT_EQ(GetPixel(canvas.dc(), x, 3), row[x]) << x;
    }
    {
        zelctl::OffscreenCanvas canvas(screen, 1, 9);
        const RECT middle = zelctl::PaintThreePiece(canvas, RECT{0, 0, 1, 9}, {set[0], set[1], set[2]},
                                                    {zelctl::Axis::Vertical, zelctl::CapFit::Natural,
                                                     zelctl::MiddleFit::Stretch});
        EXPECT_EQ(middle.top, 1) << "a vertical frame uses the caps' heights";
        EXPECT_EQ(middle.bottom, 8);
        EXPECT_EQ(GetPixel(canvas.dc(), 0, 0), L);
        EXPECT_EQ(GetPixel(canvas.dc(), 0, 4), M);
        EXPECT_EQ(GetPixel(canvas.dc(), 0, 8), R);
    }
    ReleaseDC(nullptr, screen);
}

// A stored canvas: the same bitmap while the size holds (no object made), a new one for a
// new size, the DC's state put back after each paint, every object gone with Release.
TEST_F(SkinSetTest, AStoredCanvasIsReusedWhileTheSizeHolds) {
    TargetDC screen(8, 8, RGB(1, 2, 3));
    const zel::GdiCounts empty = zel::LiveGdiObjects();
    zelctl::CanvasStore store;
    struct Paint {
        int w, h;
        bool reused;
    } paints[] = {{4, 3, false}, {4, 3, true}, {5, 3, false}, {0, 3, false}, {5, 3, true}};  // an empty one keeps it
    COLORREF last = RGB(0, 0, 0);
    for (const Paint& p : paints) {
        const zel::GdiCounts before = zel::LiveGdiObjects();
        zelctl::OffscreenCanvas canvas(screen, p.w, p.h, store);
        if (p.w > 0) {
            EXPECT_EQ(GetPixel(canvas.dc(), 0, 0), p.reused ? last : RGB(0, 0, 0))
                << p.w << "x" << p.h << ": the last paint's pixels, or a new bitmap's";
        }
        if (p.reused) {
            EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps);
        }
        EXPECT_EQ(GetTextColor(canvas.dc()), RGB(0, 0, 0)) << "each paint starts from a default DC";
        EXPECT_EQ(GetBkMode(canvas.dc()), OPAQUE);
        SetTextColor(canvas.dc(), RGB(9, 9, 9));
        SetBkMode(canvas.dc(), TRANSPARENT);
        if (p.w > 0) last = RGB(0, 90, p.w);
        canvas.Fill(RECT{0, 0, p.w, p.h}, last);
        canvas.Present();
    }
    EXPECT_EQ(GetPixel(screen, 4, 2), RGB(0, 90, 5));
    store.Release();
    store.Release();  // twice is harmless
    const zel::GdiCounts after = zel::LiveGdiObjects();
    EXPECT_EQ(after.bitmaps, empty.bitmaps);
    EXPECT_EQ(after.dcs, empty.dcs);
}

// ---- notifications --------------------------------------------------------------------------

class NotifyTest : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        LeakChecked::SetUp();
        zel::Desktop::Get().Reset();
        parent.CreateEx(0, nullptr, L"parent", WS_POPUP | WS_VISIBLE, CRect(10, 20, 210, 220), nullptr, 0);
        child.Create(nullptr, L"child", WS_CHILD | WS_VISIBLE, CRect(5, 6, 50, 60), &parent, 0x12345);
    }
    void TearDown() override {
        zel::Desktop::Get().Reset();
        LeakChecked::TearDown();
    }
    // Records the last message and can destroy the child while handling it.
    class Parent : public CWnd {
    public:
        UINT message = 0;
        WPARAM wParam = 0;
        LPARAM lParam = 0;
        NMHDR hdr{};
        bool destroyChild = false;
        CWnd* child = nullptr;

    protected:
        LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
            if (msg == WM_COMMAND || msg == WM_NOTIFY || msg == WM_VSCROLL || msg == WM_LBUTTONDOWN) {
                message = msg, wParam = wp, lParam = lp;
                if (msg == WM_NOTIFY) hdr = *reinterpret_cast<NMHDR*>(lp);
                if (destroyChild) child->DestroyWindow();
                return 0;
            }
            return CWnd::WindowProc(msg, wp, lp);
        }
    };
    Parent parent;
    CWnd child;
};

TEST_F(NotifyTest, EachFormCarriesItsParametersAndReportsSurvival) {
    const LPARAM self = reinterpret_cast<LPARAM>(child.GetSafeHwnd());
    EXPECT_TRUE(zelctl::NotifyCommand(child, BN_CLICKED));
    EXPECT_EQ(parent.message, UINT(WM_COMMAND));
    EXPECT_EQ(parent.wParam, WPARAM(0x2345)) << "the identifier's low word, code 0";
    EXPECT_EQ(parent.lParam, self);

    EXPECT_TRUE(zelctl::NotifyNmhdr(child, NM_DBLCLK));
    EXPECT_EQ(parent.wParam, WPARAM(0x12345)) << "WM_NOTIFY carries the whole identifier";
    EXPECT_EQ(parent.hdr.hwndFrom, child.GetSafeHwnd());
    EXPECT_EQ(parent.hdr.code, UINT(NM_DBLCLK));

    EXPECT_TRUE(zelctl::NotifyScroll(child, WM_VSCROLL, SB_THUMBPOSITION, 7));
    EXPECT_EQ(parent.wParam, MAKEWPARAM(SB_THUMBPOSITION, 7));

    EXPECT_TRUE(zelctl::ForwardPointer(child, WM_LBUTTONDOWN, MK_LBUTTON, CPoint(1, 2), zelctl::PointIn::Parent));
    EXPECT_EQ(parent.lParam, MAKELPARAM(6, 8));
    EXPECT_TRUE(zelctl::ForwardPointer(child, WM_LBUTTONDOWN, MK_LBUTTON, CPoint(1, 2), zelctl::PointIn::Screen));
    EXPECT_EQ(parent.lParam, MAKELPARAM(16, 28));

    parent.child = &child;
    parent.destroyChild = true;
    EXPECT_FALSE(zelctl::NotifyCommand(child)) << "the parent destroyed the control";
    EXPECT_FALSE(zelctl::NotifyCommand(child)) << "a dead control sends nothing and says so";
}

// ---- text -----------------------------------------------------------------------------------

class TextTest : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        LeakChecked::SetUp();
        screen_ = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen_);
        font_.Create(18);
        old_ = SelectObject(dc_, font_);
    }
    void TearDown() override {
        SelectObject(dc_, old_);
        DeleteDC(dc_);
        ReleaseDC(nullptr, screen_);
        font_.Reset();
        LeakChecked::TearDown();
    }
    HDC screen_ = nullptr, dc_ = nullptr;
    HGDIOBJ old_ = nullptr;
    zelctl::OwnedFont font_;
};

TEST_F(TextTest, ShorteningKeepsFittingTextAndNeverGoesBelowTheEllipsis) {
    const CString longText(L"Symphony No. 9 in D minor, Op. 125 - IV. Presto.mp3");
    const int e = zelctl::TextWidth(dc_, L"...");
    ASSERT_GT(e, 0);
    CString fits(L"Short");
    zelctl::ShortenWithEllipsis(dc_, fits, zelctl::TextWidth(dc_, fits));
    EXPECT_EQ(fits, CString(L"Short")) << "a text exactly as wide as the room is untouched";
    CString narrow = longText;
    zelctl::ShortenWithEllipsis(dc_, narrow, e - 1);
    EXPECT_EQ(narrow, CString(L"..."));
    for (int width : {e, e + 3, 60, 150, 300}) {
        CString text = longText;
        zelctl::ShortenWithEllipsis(dc_, text, width);
        ASSERT_GE(text.GetLength(), 3);
        EXPECT_EQ(text.Right(3), CString(L"...")) << width;
        const CString prefix = text.Left(text.GetLength() - 3);
        EXPECT_EQ(longText.Left(prefix.GetLength()), prefix) << width;
        if (!prefix.IsEmpty()) {
            EXPECT_GE(width - zelctl::TextWidth(dc_, prefix) - 2, e) << "room for the ellipsis and 2 px, width " << width;
        }
    }
}

TEST_F(TextTest, FontsCarryTheirQualityAndReplaceTheirPredecessor) {
    const struct {
        BYTE quality;
    } cases[] = {{DEFAULT_QUALITY}, {ANTIALIASED_QUALITY}};
    for (const auto& c : cases) {
        zelctl::OwnedFont font;
        ASSERT_TRUE(font.Create(22, FW_BOLD, L"Tahoma", c.quality));
        LOGFONTW lf{};
        ASSERT_EQ(GetObjectW(font, sizeof lf, &lf), static_cast<int>(sizeof lf));
        EXPECT_EQ(lf.lfQuality, c.quality);
        EXPECT_EQ(lf.lfHeight, 22);
        EXPECT_EQ(lf.lfWeight, FW_BOLD);
        EXPECT_EQ(lf.lfCharSet, DEFAULT_CHARSET);
    }
    HFONT raw = zelctl::CreateControlFont(18, FW_NORMAL, L"Tahoma", ANTIALIASED_QUALITY);
    zelctl::RecreateFont(raw, 30);
    LOGFONTW lf{};
    ASSERT_EQ(GetObjectW(raw, sizeof lf, &lf), static_cast<int>(sizeof lf));
    EXPECT_EQ(lf.lfHeight, 30);
    EXPECT_EQ(lf.lfQuality, DEFAULT_QUALITY) << "a recreated font is of the plain description";
    zelctl::ReleaseFont(raw);
    EXPECT_EQ(raw, nullptr);
}

// The shrink rule itself (two pixels a step, the floors 12 and 11) is the label's fit table;
// here, that the DC comes back as it was whatever the start and the room.
TEST_F(TextTest, ShrunkTextRestoresTheDcWhateverTheStartAndRoom) {
    const CString text(L"A long caller name");
    const struct {
        RECT room;
        int start;
    } cases[] = {
        {{0, 0, 400, 40}, 18},           {{0, 0, 5, 40}, 40},
        {{0, 0, 5, 40}, INT_MAX},        {{0, 0, 5, 40}, INT_MIN},
        {{0, -0x40000000, 5, 0x3FFFFFFF}, 40}, {{0, 0, 5, 40}, -7},
    };
    for (const auto& c : cases) {
        zelctl::DrawShrunkText(dc_, text, c.room, DT_SINGLELINE | DT_MODIFYSTRING, RGB(1, 2, 3), nullptr, c.start);
        EXPECT_EQ(GetCurrentObject(dc_, OBJ_FONT), static_cast<HGDIOBJ>(font_.get())) << c.start;
        EXPECT_EQ(GetTextColor(dc_), RGB(0, 0, 0)) << c.start;
        EXPECT_EQ(GetBkMode(dc_), OPAQUE) << c.start;
    }
    EXPECT_EQ(zelctl::WithoutModifyString(DT_SINGLELINE | DT_MODIFYSTRING | DT_END_ELLIPSIS),
              static_cast<UINT>(DT_SINGLELINE | DT_END_ELLIPSIS));
}

// ---- stroke digits and dates -------------------------------------------------------------

TEST(StrokeDigits, WidthsFollowTheGlyph) {
    const struct {
        wchar_t ch;
        int w, width;
    } cases[] = {{L'0', 8, 8}, {L'9', 6, 6}, {L'-', 8, 8}, {L'1', 8, 6}, {L'1', 20, 6},
                 {L':', 8, 1}, {L'.', 8, 0}, {L'/', 8, 0}, {L'a', 8, 0}, {L' ', 8, 0}};
    for (const auto& c : cases) EXPECT_EQ(zelctl::StrokeGlyphWidth(c.ch, c.w), c.width) << char(c.ch) << " " << c.w;
}

class StrokeDigitsTest : public zel::test::LeakChecked {};

TEST_F(StrokeDigitsTest, ZeroIsTheBoxOutlineWithItsCornerClearAndOthersDrawNothing) {
    zel::test::MemorySurface s(12, 14, false);
    zel::test::FillBox(s.dc(), 0, 0, 12, 14, RGB(255, 255, 255));
    EXPECT_EQ(zelctl::DrawStrokeGlyph(s.dc(), L'0', 1, 1, 6, 11), 6);
    EXPECT_EQ(GetPixel(s.dc(), 1, 1), RGB(255, 255, 255)) << "the top-left corner stays clear";
    EXPECT_EQ(GetPixel(s.dc(), 2, 1), RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(s.dc(), 7, 12), RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(s.dc(), 1, 12), RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(s.dc(), 4, 6), RGB(255, 255, 255)) << "an outline, not a fill";
    EXPECT_EQ(GetPixel(s.dc(), 8, 1), RGB(255, 255, 255)) << "nothing right of the box";
    zel::test::MemorySurface blank(12, 14, false);
    zel::test::FillBox(blank.dc(), 0, 0, 12, 14, RGB(255, 255, 255));
    EXPECT_EQ(zelctl::DrawStrokeGlyph(blank.dc(), L'x', 1, 1, 6, 11), 0);
    for (int y = 0; y < 14; ++y)
        for (int x = 0; x < 12; ++x) ASSERT_EQ(GetPixel(blank.dc(), x, y), RGB(255, 255, 255)) << x << "," << y;
}

TEST(DateMath, MonthLengthsFollowTheGregorianRule) {
    const struct {
        UINT year, month, days;
    } cases[] = {{2026, 1, 31}, {2026, 4, 30}, {2026, 12, 31}, {2026, 2, 28}, {2024, 2, 29},
                 {1900, 2, 28}, {2000, 2, 29}, {2100, 2, 28}, {2026, 0, 30}, {2026, 13, 30}};
    for (const auto& c : cases) EXPECT_EQ(zelctl::DaysInMonth(c.year, c.month), c.days) << c.year << "-" << c.month;
}

// ---- rows -----------------------------------------------------------------------------------

TEST(RowGeometry, HitTestsRowsFromTheScrollPosition) {
    const zelctl::RowGeometry rows{RECT{3, 3, 97, 103}, 24, 5, 12};
    EXPECT_EQ(rows.VisibleRows(), 4);
    EXPECT_EQ(rows.LastFirstRow(), 8);
    EXPECT_EQ(rows.RowAt(POINT{10, 3}), 5);
    EXPECT_EQ(rows.RowAt(POINT{10, 26}), 5);
    EXPECT_EQ(rows.RowAt(POINT{10, 27}), 6);
    EXPECT_EQ(rows.RowAt(POINT{2, 27}), -1) << "left of the area";
    EXPECT_EQ(rows.RowAtY(1), 5) << "(1 - 3) / 24 truncates toward zero";
    EXPECT_EQ(rows.RowRect(6).top, 27);
    EXPECT_EQ((zelctl::RowGeometry{RECT{0, 0, 10, 100}, 24, 0, 4}).LastFirstRow(), 0) << "all fit";
    EXPECT_EQ((zelctl::RowGeometry{RECT{0, 0, 10, 100}, 24, 3, 4}).RowAt(POINT{1, 30}), -1) << "past the rows";
    EXPECT_EQ((zelctl::RowGeometry{RECT{0, 0, 10, 100}, 0, 0, 4}).RowAtY(5), -1);
}

TEST(RowGeometry, ScrollToShowMovesAsLittleAsPossible) {
    const struct {
        int row, top, rows, count, expected;
    } cases[] = {
        {3, 0, 5, 20, 0}, {7, 0, 5, 20, 3}, {2, 6, 5, 20, 2}, {19, 0, 5, 20, 15},
        {-1, 9, 5, 20, 9}, {-1, 30, 5, 20, 15}, {0, 4, 5, 3, 0}, {4, 0, 0, 10, 0},
    };
    for (const auto& k : cases)
        EXPECT_EQ(zelctl::ScrollToShow(k.row, k.top, k.rows, k.count), k.expected)
            << k.row << " " << k.top << " " << k.rows << " " << k.count;
}

}  // namespace
