#include "ListPaint.h"

#include <algorithm>

#include "CZELScrollbar.h"
#include "OffscreenCanvas.h"
#include "SkinText.h"
#include "TransparentBlit.h"

namespace zelctl::speciallists {

namespace {

// A memory DC with `bitmap` selected, both released at the end of the scope.
class SourceDC {
public:
    SourceDC(HDC like, HBITMAP bitmap) : dc_(::CreateCompatibleDC(like)) {
        if (dc_ && bitmap) old_ = ::SelectObject(dc_, bitmap);
    }
    ~SourceDC() {
        if (old_) ::SelectObject(dc_, old_);
        if (dc_) ::DeleteDC(dc_);
    }
    SourceDC(const SourceDC&) = delete;
    SourceDC& operator=(const SourceDC&) = delete;
    bool ok() const { return old_ != nullptr; }
    HDC dc() const { return dc_; }

private:
    HDC dc_;
    HGDIOBJ old_ = nullptr;
};

}  // namespace

void StretchPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh) {
    if (!src || w <= 0 || h <= 0 || sw <= 0 || sh <= 0) return;
    SourceDC source(dst, src);
    if (!source.ok()) return;
    if (w == sw && h == sh)
        ::BitBlt(dst, x, y, w, h, source.dc(), sx, sy, SRCCOPY);
    else
        ::StretchBlt(dst, x, y, w, h, source.dc(), sx, sy, sw, sh, SRCCOPY);
}

void KeyedPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh, COLORREF key) {
    if (!src || w <= 0 || h <= 0 || sw <= 0 || sh <= 0) return;
    SourceDC source(dst, src);
    if (!source.ok()) return;
    TransparentBlit(dst, x, y, w, h, source.dc(), sx, sy, sw, sh, key);
}

CRect ListFrame::ClientOf(CWnd& list) {
    CRect client;
    list.GetClientRect(&client);
    return client;
}

ListFrame::ListFrame(const CRect& client, HDC screen, const HBITMAP (&images)[4], CanvasStore& store)
    : OffscreenCanvas(screen, client.Width(), client.Height(), store), client_(client) {
    ::SetBkMode(dc(), TRANSPARENT);
    PaintListFrame(dc(), client_, images);
}

bool PaintListFrame(HDC dst, const RECT& client, const HBITMAP (&images)[4]) {
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
    StretchPart(dst, rx, 0, s[2].cx, s[2].cy, images[2], 0, 0, s[2].cx, s[2].cy);
    StretchPart(dst, rx, height - s[1].cy, s[2].cx, s[1].cy, images[3], 0, 0, s[2].cx, s[1].cy);
    StretchPart(dst, rx, s[2].cy, s[2].cx, height - s[2].cy - s[1].cy, images[2], 0, s[2].cy - 1, s[2].cx, 1);
    // Left strip.
    StretchPart(dst, 0, 0, s[0].cx, s[0].cy, images[0], 0, 0, s[0].cx, s[0].cy);
    StretchPart(dst, 0, height - s[1].cy, s[0].cx, s[1].cy, images[1], 0, 0, s[0].cx, s[1].cy);
    StretchPart(dst, 0, s[0].cy, s[0].cx, height - s[0].cy - s[1].cy, images[0], 0, s[0].cy - 1, s[0].cx, 1);
    // Centre: the left strip's last column, taken from the surface itself.
    const int cw = width - s[0].cx - s[2].cx;
    if (cw > 0 && height > 0) ::StretchBlt(dst, s[0].cx, 0, cw, height, dst, s[0].cx - 1, 0, 1, height, SRCCOPY);
    return true;
}

bool PaintRowPieces(HDC dst, const RECT& row, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3]) {
    if (!pieces[0] || !pieces[1] || !pieces[2]) return false;
    const int h = row.bottom - row.top;
    StretchPart(dst, row.right - sizes[2].cx, row.top, sizes[2].cx, h, pieces[2], 0, 0, sizes[2].cx, h);
    StretchPart(dst, row.left, row.top, sizes[0].cx, h, pieces[0], 0, 0, sizes[0].cx, h);
    const int mx = row.left + sizes[0].cx;
    StretchPart(dst, mx, row.top, row.right - sizes[2].cx - mx, h, pieces[1], 0, 0, sizes[1].cx,
                std::min<int>(h, sizes[1].cy));
    return true;
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
