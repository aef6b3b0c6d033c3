#include "CZELTelLCD.h"

#include <algorithm>

#include "ControlFont.h"
#include "LabelPaint.h"
#include "SkinList.h"
#include "SkinText.h"

namespace {

constexpr int kDefaultFontHeight = 18;
constexpr int kNumberInset = 5;   // pixels kept clear left and right of the number
constexpr UINT kNumberFormat = DT_SINGLELINE | DT_VCENTER | DT_CENTER;
constexpr UINT kStatusFormat = DT_VCENTER | DT_SINGLELINE;

}  // namespace

BEGIN_MESSAGE_MAP(CZELTelLCD, CZELLable)
    ON_WM_PAINT()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELTelLCD::CZELTelLCD()
    : m_indicators(std::make_unique<zelctl::SkinSet>(kIndicators)),
      // Only these first fonts are antialiased; the ones InitCtrl makes are the device default.
      m_hNumberFont(zelctl::CreateControlFont(kDefaultFontHeight, FW_NORMAL, L"Tahoma", ANTIALIASED_QUALITY)),
      m_hTimeFont(zelctl::CreateControlFont(kDefaultFontHeight, FW_NORMAL, L"Tahoma", ANTIALIASED_QUALITY)),
      m_crNumber(RGB(0, 0, 0)),
      m_crTime(RGB(255, 255, 255)),
      m_nMode(0) {}

// OnDestroy has released the fonts and indicators of a display that had a window; these
// are for one that never had one.
CZELTelLCD::~CZELTelLCD() { ReleaseFonts(); }

void CZELTelLCD::ReleaseFonts() {
    zelctl::ReleaseFont(m_hNumberFont);
    zelctl::ReleaseFont(m_hTimeFont);
}

void CZELTelLCD::MakeFonts(const DWORD* colors, const int* heights) {
    ReleaseFonts();
    m_hNumberFont = zelctl::CreateControlFont(heights[0]);
    m_hTimeFont = zelctl::CreateControlFont(heights[1]);
    m_crNumber = colors[0];
    m_crTime = colors[1];
}

void CZELTelLCD::InitCtrl(UINT* pIDs, DWORD* pColors, int* pHeights, int nMode, HINSTANCE hInst) {
    if (!pIDs || !pColors || !pHeights) return;
    m_frame->Release(zelctl::kLabelMiddle);
    m_indicators->ReleaseAll();
    if (nMode == 1) {
        m_frame->LoadIds({pIDs[0]}, hInst, zelctl::kLabelMiddle);
        m_indicators->LoadIds({pIDs[1], pIDs[2]}, hInst, kLeftIndicator);
        m_nMode = 1;
    } else if (nMode == 2) {
        m_frame->LoadIds({pIDs[0]}, hInst, zelctl::kLabelMiddle);
        m_indicators->LoadIds({pIDs[1]}, hInst, kRightIndicator);
        m_nMode = 2;
    }
    MakeFonts(pColors, pHeights);
    m_kept->Forget();
}

void CZELTelLCD::InitCtrl(CArray<CString, CString>& arrFrame, CArray<CString, CString>& arrIndicators,
                          DWORD (&colors)[3], int (&heights)[3], int nMode) {
    if (arrFrame.GetSize() < 3 || arrIndicators.GetSize() < 2) return;
    m_nMode = nMode;
    LoadBitmap(arrFrame[0], arrFrame[1], arrFrame[2]);
    // Mode 2 shows no left indicator, and one kept loaded would still set the strip's size.
    m_indicators->Set(kLeftIndicator, nMode == 2 ? nullptr : zelctl::LoadSkinFile(arrIndicators[0]));
    m_indicators->Set(kRightIndicator, zelctl::LoadSkinFile(arrIndicators[1]));
    MakeFonts(colors, heights);
    m_nFontHeight = heights[0];
    m_kept->Forget();  // after the indicators: LoadBitmap's repaint kept the old ones
}

void CZELTelLCD::SetszTime(CString& str) {
    if (m_nMode != 1) return;
    m_strTime = str;
    if (!::IsWindow(m_hWnd)) return;
    // The taller of the two strips: the status text sits beside the left indicator, so the
    // right one's height alone could leave part of the old text on screen.
    const int strip = std::max(m_indicators->Size(kLeftIndicator).cy, m_indicators->Size(kRightIndicator).cy);
    CRect client;
    GetClientRect(&client);
    CRect rc(client.left, client.bottom - strip, client.right, client.bottom);
    InvalidateRect(&rc, TRUE);
}

// The size of the last bitmap the paint measures -- the middle, then the right indicator,
// then the left -- counting only those loaded and drawn. In mode 1 with both indicators it
// is the left one's, whose height is the status strip's and whose width is where the
// status text starts.
SIZE CZELTelLCD::StripSize() const {
    SIZE size{0, 0};
    auto measure = [&size](const zelctl::SkinSet& set, size_t piece) {
        if (set[piece]) size = set.Size(piece);
    };
    measure(*m_frame, zelctl::kLabelMiddle);
    if (m_nMode == 1 || m_nMode == 2) measure(*m_indicators, kRightIndicator);
    if (m_nMode == 1) measure(*m_indicators, kLeftIndicator);
    return size;
}

void CZELTelLCD::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    const SIZE strip = StripSize();
    CRect number(client.left, client.top, client.right, client.bottom - strip.cy);
    number.DeflateRect(kNumberInset, 0, kNumberInset, 0);
    const RECT status{strip.cx, client.bottom - strip.cy, client.right, client.bottom};
    CString text;
    GetWindowText(text);
    // The frame as the label draws it, and the indicators: kept, as they change only with
    // the skin and the mode.
    auto backdrop = [&](zelctl::OffscreenCanvas& c) {
        zelctl::PaintLabelFrame(c, *m_frame, client);
        if (m_nMode == 1 || m_nMode == 2) {
            const SIZE right = m_indicators->Size(kRightIndicator);
            c.Blit((*m_indicators)[kRightIndicator], client.right - right.cx, client.bottom - right.cy, right.cx,
                   right.cy);
        }
        if (m_nMode == 1) {
            const SIZE left = m_indicators->Size(kLeftIndicator);
            c.Blit((*m_indicators)[kLeftIndicator], 0, client.Height() - left.cy, left.cx, left.cy);
        }
    };
    m_kept->Paint(dc.GetSafeHdc(), client.Width(), client.Height(), (kNumberFormat & DT_CENTER) != 0, backdrop,
                  [&](zelctl::OffscreenCanvas& c) {
                      zelctl::DrawShrunkText(c.dc(), text, c.Local(number), kNumberFormat, m_crNumber, m_hNumberFont,
                                             m_nFontHeight);
                      zelctl::DrawSkinText(c.dc(), m_strTime, c.Local(status), kStatusFormat, m_crTime, m_hTimeFont);
                  });
}

void CZELTelLCD::OnDestroy() {
    ReleaseFonts();
    m_indicators->ReleaseAll();
    CZELLable::OnDestroy();  // and the kept canvases
}
