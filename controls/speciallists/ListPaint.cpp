#include "ListPaint.h"

#include <algorithm>

#include "CZELScrollbar.h"
#include "OffscreenCanvas.h"
#include "SkinText.h"
#include "TransparentBlit.h"

namespace zelctl::speciallists {

PieceDC::~PieceDC() {
    if (original_) ::SelectObject(dc_, original_);
    if (dc_) ::DeleteDC(dc_);
}

HDC PieceDC::Select(HDC like, HBITMAP bitmap) {
    if (!bitmap) return nullptr;
    if (!dc_) dc_ = ::CreateCompatibleDC(like);
    if (!dc_) return nullptr;
    HGDIOBJ previous = ::SelectObject(dc_, bitmap);
    if (!previous) return nullptr;
    if (!original_) original_ = previous;
    return dc_;
}

void StretchPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh, PieceDC* pieces) {
    if (!src || w <= 0 || h <= 0 || sw <= 0 || sh <= 0) return;
    PieceDC own;
    HDC source = (pieces ? *pieces : own).Select(dst, src);
    if (!source) return;
    if (w == sw && h == sh)
        ::BitBlt(dst, x, y, w, h, source, sx, sy, SRCCOPY);
    else
        ::StretchBlt(dst, x, y, w, h, source, sx, sy, sw, sh, SRCCOPY);
}

void KeyedPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh, COLORREF key,
               PieceDC* pieces) {
    if (!src || w <= 0 || h <= 0 || sw <= 0 || sh <= 0) return;
    PieceDC own;
    HDC source = (pieces ? *pieces : own).Select(dst, src);
    if (!source) return;
    TransparentBlit(dst, x, y, w, h, source, sx, sy, sw, sh, key);
}

CRect ListFrame::ClientOf(CWnd& list) {
    CRect client;
    list.GetClientRect(&client);
    return client;
}

namespace {
// Whether the store's canvas will be reused for a canvas of this size.
bool StoreFits(const CanvasStore& store, const CRect& client) {
    return store.dc() && store.width() == client.Width() && store.height() == client.Height();
}
}  // namespace

ListFrame::ListFrame(const CRect& client, HDC screen, const HBITMAP (&images)[4], CanvasStore& store)
    : ListFrame(client, screen, images, store, StoreFits(store, client)) {}

ListFrame::ListFrame(const CRect& client, HDC screen, const HBITMAP (&images)[4], CanvasStore& store, bool kept)
    : OffscreenCanvas(screen, client.Width(), client.Height(), store),
      client_(client),
      images_(images),
      // A canvas the store could not keep is a new one for this paint only.
      reused_(kept && store.dc() == dc()) {
    ::SetBkMode(dc(), TRANSPARENT);
    // A new bitmap reads as zero (black), and the platform clears it before a first write
    // that leaves part of it: writing that black whole first costs a row fill instead.
    if (!reused_) ::PatBlt(dc(), 0, 0, width(), height(), BLACKNESS);
}

void ListFrame::PaintFrame(const std::vector<RECT>& covered) {
    if (covered.empty()) {
        PaintListFrame(dc(), client_, images_, &pieces_);
        return;
    }
    // The centre is stretched from the left strip's last column on the canvas itself, so
    // the left strip is drawn whole; right of it nothing under a covering row is drawn.
    int from = 0;
    bool all = true;
    for (HBITMAP image : images_) all = all && image && BitmapSize(image).cx > 0;
    if (all) from = BitmapSize(images_[0]).cx;
    const int saved = ::SaveDC(dc());
    for (const RECT& rc : covered)
        ::ExcludeClipRect(dc(), std::max<int>(rc.left, from), rc.top, rc.right, rc.bottom);
    PaintListFrame(dc(), client_, images_, &pieces_);
    ::RestoreDC(dc(), saved);
}

bool PaintListFrame(HDC dst, const RECT& client, const HBITMAP (&images)[4], PieceDC* pieces) {
    const int width = client.right - client.left, height = client.bottom - client.top;
    SIZE s[4];
    for (int i = 0; i < 4; ++i) s[i] = BitmapSize(images[i]);
    if (!images[0] || !images[1] || !images[2] || !images[3] || !s[0].cx || !s[1].cx || !s[2].cx || !s[3].cx) {
        HBRUSH white = ::CreateSolidBrush(RGB(255, 255, 255));
        ::FillRect(dst, &client, white);
        ::DeleteObject(white);
        return false;
    }
    // Right strip.
    const int rx = client.right - s[2].cx - client.left;
    StretchPart(dst, rx, 0, s[2].cx, s[2].cy, images[2], 0, 0, s[2].cx, s[2].cy, pieces);
    StretchPart(dst, rx, height - s[1].cy, s[2].cx, s[1].cy, images[3], 0, 0, s[2].cx, s[1].cy, pieces);
    StretchPart(dst, rx, s[2].cy, s[2].cx, height - s[2].cy - s[1].cy, images[2], 0, s[2].cy - 1, s[2].cx, 1, pieces);
    // Left strip.
    StretchPart(dst, 0, 0, s[0].cx, s[0].cy, images[0], 0, 0, s[0].cx, s[0].cy, pieces);
    StretchPart(dst, 0, height - s[1].cy, s[0].cx, s[1].cy, images[1], 0, 0, s[0].cx, s[1].cy, pieces);
    StretchPart(dst, 0, s[0].cy, s[0].cx, height - s[0].cy - s[1].cy, images[0], 0, s[0].cy - 1, s[0].cx, 1, pieces);
    // Centre: the left strip's last column, taken from the surface itself.
    const int cw = width - s[0].cx - s[2].cx;
    if (cw > 0 && height > 0) ::StretchBlt(dst, s[0].cx, 0, cw, height, dst, s[0].cx - 1, 0, 1, height, SRCCOPY);
    return true;
}

bool PaintRowPieces(HDC dst, const RECT& row, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3], PieceDC* source) {
    if (!pieces[0] || !pieces[1] || !pieces[2]) return false;
    const int h = row.bottom - row.top;
    StretchPart(dst, row.right - sizes[2].cx, row.top, sizes[2].cx, h, pieces[2], 0, 0, sizes[2].cx, h, source);
    StretchPart(dst, row.left, row.top, sizes[0].cx, h, pieces[0], 0, 0, sizes[0].cx, h, source);
    const int mx = row.left + sizes[0].cx;
    StretchPart(dst, mx, row.top, row.right - sizes[2].cx - mx, h, pieces[1], 0, 0, sizes[1].cx,
                std::min<int>(h, sizes[1].cy), source);
    return true;
}

bool RowPiecesCover(const RECT& row, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3]) {
    if (!pieces[0] || !pieces[1] || !pieces[2]) return false;
    const long long h = row.bottom - row.top, width = static_cast<long long>(row.right) - row.left;
    if (h <= 0 || width <= 0 || sizes[0].cx < 0 || sizes[2].cx < 0) return false;
    const SIZE left = BitmapSize(pieces[0]), middle = BitmapSize(pieces[1]), right = BitmapSize(pieces[2]);
    const bool capsWhole = left.cx >= sizes[0].cx && left.cy >= h && right.cx >= sizes[2].cx && right.cy >= h;
    const long long between = width - sizes[0].cx - sizes[2].cx;
    if (between <= 0) return capsWhole;
    const long long sh = std::min<long long>(h, sizes[1].cy);
    return capsWhole && sizes[1].cx > 0 && sh > 0 && middle.cx >= sizes[1].cx && middle.cy >= sh;
}

// ---- row backgrounds ---------------------------------------------------------------------

void RowBackdrops::Release() {
    if (original_) ::SelectObject(dc_, original_);
    for (const Kind& kind : kinds_) ::DeleteObject(kind.picture);
    if (dc_) ::DeleteDC(dc_);
    kinds_.clear();
    dc_ = nullptr;
    original_ = nullptr;
}

HDC RowBackdrops::Picture(HDC like, const Kind& kind) {
    if (!dc_) dc_ = ::CreateCompatibleDC(like);
    if (!dc_) return nullptr;
    HGDIOBJ previous = ::SelectObject(dc_, kind.picture);
    if (!previous) return nullptr;
    if (!original_) original_ = previous;
    return dc_;
}

bool RowBackdrops::Paint(HDC dst, const RECT& row, int height, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3],
                         PieceDC& source) {
    const int width = row.right - row.left;
    if (!RowPiecesCover(RECT{0, 0, width, height}, pieces, sizes))
        return PaintRowPieces(dst, row, pieces, sizes, &source);
    PictureKey kind;
    for (int k = 0; k < 3; ++k) kind << pieces[k] << sizes[k];
    // A cut row is the top of a whole one when the middle is copied row for row (its source
    // as tall as a whole row); each cap is copied row for row anyway.
    Paint(dst, row, height, kind, sizes[1].cy >= height,
          [&](HDC picture, const RECT& whole) { PaintRowPieces(picture, whole, pieces, sizes, &source); });
    return true;
}

void RowBackdrops::Paint(HDC dst, const RECT& row, int height, const PictureKey& kind, bool cutIsTop,
                         const Painter& paint) {
    const int width = row.right - row.left, h = row.bottom - row.top;
    if (width <= 0 || h <= 0) return;
    // A row of more than 2^20 pixels (a skin's absurd row height) is not kept: drawn in
    // place, only its visible part costs anything.
    constexpr long long kMostPixels = 1 << 20;
    if (h > height || (h < height && !cutIsTop) || static_cast<long long>(width) * height > kMostPixels) {
        paint(dst, row);
        return;
    }
    auto found = std::find_if(kinds_.begin(), kinds_.end(),
                              [&](const Kind& k) { return k.width == width && k.height == height && k.key == kind; });
    if (found == kinds_.end()) {
        constexpr size_t kMostKinds = 4;  // ordinary and current, and a set or two more
        if (kinds_.size() >= kMostKinds) {
            if (original_) ::SelectObject(dc_, original_);  // the oldest may be selected
            ::DeleteObject(kinds_.front().picture);
            kinds_.erase(kinds_.begin());
        }
        Kind made{kind, width, height, ::CreateCompatibleBitmap(dst, width, height)};
        HDC picture = made.picture ? Picture(dst, made) : nullptr;
        if (!picture) {
            if (made.picture) ::DeleteObject(made.picture);
            paint(dst, row);
            return;
        }
        // Written whole first (see ListFrame): the row's picture then covers it.
        ::PatBlt(picture, 0, 0, width, height, BLACKNESS);
        paint(picture, RECT{0, 0, width, height});
        kinds_.push_back(std::move(made));
        found = kinds_.end() - 1;
    } else if (found != kinds_.end() - 1) {
        std::rotate(found, found + 1, kinds_.end());
        found = kinds_.end() - 1;
    }
    if (HDC picture = Picture(dst, *found))
        ::BitBlt(dst, row.left, row.top, width, h, picture, 0, 0, SRCCOPY);
    else
        paint(dst, row);
}

// ---- the kept canvas -------------------------------------------------------------------

void KeptRows::Release() {
    known_ = false;
    slots_.clear();
    stale_.clear();
    backdrops_.Release();
}

PictureKey& PictureKey::operator<<(long long value) {
    const auto bits = static_cast<unsigned long long>(value);
    data_.push_back(static_cast<wchar_t>(bits & 0xFFFFFFFFu));
    data_.push_back(static_cast<wchar_t>(bits >> 32));
    return *this;
}

PictureKey& PictureKey::operator<<(const CString& text) {
    // The length first, so that ("ab", "c") and ("a", "bc") differ.
    *this << static_cast<long long>(text.GetLength());
    data_.append(text.GetString(), static_cast<size_t>(text.GetLength()));
    return *this;
}

void KeptRows::Stale(const RECT& rc) {
    RECT part;
    if (!::IntersectRect(&part, &rc, &client_)) return;
    // Many small pieces cost every paint a clip rectangle each: past a few, their bounding
    // box stands for them (drawing a little more than needed is always right).
    constexpr size_t kMostPieces = 16;
    if (stale_.size() >= kMostPieces) {
        RECT box = part;
        for (const RECT& r : stale_) ::UnionRect(&box, &box, &r);
        stale_.assign(1, box);
        return;
    }
    stale_.push_back(part);
}

void KeptRows::Begin(HDC paint, const CRect& client, bool fresh, PictureKey layout) {
    next_.clear();
    const RECT whole = client;
    painted_ = whole;
    RECT box{};
    if (!fresh && ::GetClipBox(paint, &box) != ERROR) ::IntersectRect(&painted_, &box, &whole);
    if (fresh || !known_ || !::EqualRect(&client_, &whole) || !(layout == layout_)) {
        client_ = whole;
        stale_.assign(1, whole);
        slots_.clear();
        known_ = false;
    }
    layout_ = std::move(layout);
}

void KeptRows::Row(const RECT& reach, PictureKey key) {
    const size_t slot = next_.size();
    if (known_ && slot < slots_.size()) {
        const Slot& old = slots_[slot];
        if (!(old.key == key) || !::EqualRect(&old.reach, &reach)) {
            Stale(old.reach);
            Stale(reach);
        }
    } else if (known_) {
        Stale(reach);  // a row where there was none
    }
    next_.push_back(Slot{reach, std::move(key)});
}

bool KeptRows::Clip(HDC canvas) {
    // Slots that held a row before and hold none now show the frame again.
    if (known_)
        for (size_t k = next_.size(); k < slots_.size(); ++k) Stale(slots_[k].reach);
    HRGN draw = nullptr;
    for (const RECT& r : stale_) {
        RECT part;
        if (!::IntersectRect(&part, &r, &painted_)) continue;
        if (!draw) {
            draw = ::CreateRectRgnIndirect(&part);
        } else if (HRGN add = ::CreateRectRgnIndirect(&part)) {
            ::CombineRgn(draw, draw, add, RGN_OR);
            ::DeleteObject(add);
        }
    }
    if (!draw) {
        // Nothing stale here: the canvas draws nothing (a clip that shows no pixel).
        ::IntersectClipRect(canvas, 0, 0, 0, 0);
        return false;
    }
    ::ExtSelectClipRgn(canvas, draw, RGN_AND);
    ::DeleteObject(draw);
    return true;
}

void KeptRows::End() {
    slots_.swap(next_);
    next_.clear();
    known_ = true;
    // What lay in this paint is drawn now; the rest stays stale.
    std::vector<RECT> left;
    for (const RECT& r : stale_) {
        RECT cut;
        if (!::IntersectRect(&cut, &r, &painted_)) {
            left.push_back(r);
            continue;
        }
        // The parts of r outside painted_: above, below, then left and right of the band.
        if (r.top < cut.top) left.push_back(RECT{r.left, r.top, r.right, cut.top});
        if (cut.bottom < r.bottom) left.push_back(RECT{r.left, cut.bottom, r.right, r.bottom});
        if (r.left < cut.left) left.push_back(RECT{r.left, cut.top, cut.left, cut.bottom});
        if (cut.right < r.right) left.push_back(RECT{cut.right, cut.top, r.right, cut.bottom});
    }
    stale_.clear();
    for (const RECT& r : left) Stale(r);
}

int TextOverhang(HDC dc, int rowHeight, std::initializer_list<HFONT> fonts) {
    int most = 0;
    for (HFONT font : fonts) {
        const HGDIOBJ old = font ? ::SelectObject(dc, font) : nullptr;
        TEXTMETRICW tm{};
        if (::GetTextMetricsW(dc, &tm)) most = std::max<int>(most, tm.tmHeight - rowHeight);
        if (old) ::SelectObject(dc, old);
    }
    // Centred by its measured height, a taller line stands out by half the difference
    // either way; a line drawn from the row's top stands out below by all of it.
    return std::max(0, most) + 2;
}

void ApplyAlwaysShownBar(CWnd& list, CZELScrollbar& bar, CRect& rcScroll, int max, int rowHeight) {
    CRect client;
    list.GetClientRect(&client);
    if (max > 0) {
        bar.SetScrollRange(0, max);
        bar.SetPagesize(rowHeight > 0 ? client.Height() / rowHeight : 0);
        bar.ShowWindow(SW_SHOW);
        bar.EnableWindow(TRUE);
        const int barWidth = rcScroll.Width();
        rcScroll.SetRect(client.right - barWidth, client.top, client.right, client.bottom);
    } else {
        bar.EnableWindow(FALSE);
        bar.SetScrollRange(0, 100);
        bar.SetScrollPos(0, TRUE);
        bar.ShowWindow(SW_SHOW);
    }
}

CString ShortenKeepingExtension(HDC dc, const CString& name, int width) {
    const int dot = name.ReverseFind(L'.');
    const CString extension = dot >= 0 ? name.Mid(dot) : CString();
    CString stem = dot >= 0 ? name.Left(dot) : name;
    RECT er{0, 0, 0, 0};
    if (!extension.IsEmpty()) ::DrawTextW(dc, extension, extension.GetLength(), &er, kMeasureLine);
    ShortenWithEllipsis(dc, stem, width - (er.right - er.left));
    return stem + extension;
}

int LineHeight(HDC dc, const CString& text) {
    RECT rc{0, 0, 0, 0};
    ::DrawTextW(dc, text, text.GetLength(), &rc, kMeasureLine);
    return rc.bottom - rc.top;
}

void DrawCutLine(HDC dc, const CString& text, int left, int right, int top, int rowHeight, int bottom, UINT format) {
    const int textHeight = LineHeight(dc, text);
    RECT rc{left, top + (rowHeight - textHeight) / 2, right, bottom};
    if (rc.bottom <= rc.top) return;
    ::DrawTextW(dc, text, text.GetLength(), &rc, format);
}

}  // namespace zelctl::speciallists
