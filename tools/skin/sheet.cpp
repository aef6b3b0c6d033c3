#include "sheet.h"

#include <zel/desktop.h>
#include <zel/gdi_extras.h>
#include <zel/resources.h>

#include <algorithm>

#include "family.h"
#include "gdi/image_codec.h"
#include "kernel/file.h"

namespace zel::skintool {

namespace {

constexpr int kScreenWidth = 800, kScreenHeight = 480;
constexpr int kGap = 12, kCaptionHeight = 18, kMargin = 8;
constexpr COLORREF kBackdrop = RGB(32, 36, 44);  // behind each control, as a dark screen
constexpr COLORREF kSheetBack = RGB(16, 18, 22);
constexpr COLORREF kCaption = RGB(220, 224, 232);
constexpr wchar_t kHostClass[] = L"ZelSkinSheetHost";
constexpr DWORD kClassAlreadyExists = 1410;  // ERROR_CLASS_ALREADY_EXISTS

struct Cell {
    std::wstring caption;
    HBITMAP picture = nullptr;  // owned
    int width = 0, height = 0;
};

SIZE PictureSize(const std::string& path) {
    std::optional<std::string> bytes = kernel::ReadWholeFile(path, size_t{512} << 20);
    if (!bytes) return {0, 0};
    detail::DecodedImage image = detail::DecodeImage(reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size());
    return image.ok() ? SIZE{image.pixels.width, image.pixels.height} : SIZE{0, 0};
}

SpecimenSkin SkinOf(const ControlEntry& entry, const Family& family, HINSTANCE module) {
    SpecimenSkin skin;
    skin.module = module;
    const size_t count = std::max(entry.pieces.size(), family.pieces.size());
    skin.paths.resize(count);
    skin.ids.resize(count, 0);
    skin.sizes.resize(count, SIZE{0, 0});
    for (size_t i = 0; i < entry.pieces.size(); ++i) {
        if (!entry.pieces[i].resolved) continue;
        skin.paths[i] = entry.pieces[i].path;
        skin.ids[i] = entry.pieces[i].id;
        skin.sizes[i] = PictureSize(entry.pieces[i].path);
    }
    return skin;
}

bool RegisterHostClass() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.lpszClassName = kHostClass;
    wc.hbrBackground = nullptr;  // painted by WM_ERASEBKGND's default: nothing; filled below
    return RegisterClassW(&wc) || GetLastError() == kClassAlreadyExists;
}

// The window's on-screen pixels, copied into a bitmap of its own.
HBITMAP CopyFromScreen(const RECT& rc) {
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP picture = CreateCompatibleBitmap(screen, rc.right - rc.left, rc.bottom - rc.top);
    HGDIOBJ old = SelectObject(memory, picture);
    BitBlt(memory, 0, 0, rc.right - rc.left, rc.bottom - rc.top, screen, rc.left, rc.top, SRCCOPY);
    SelectObject(memory, old);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

// One state on a fresh desktop: a host window the size of the screen in the backdrop
// colour, the control near its corner, every message handled, the window copied.
std::optional<Cell> Paint(const ControlEntry& entry, const Family& family, const SpecimenSkin& skin, size_t state) {
    zel::Desktop::Get().Reset({kScreenWidth, kScreenHeight});
    if (!RegisterHostClass()) return std::nullopt;
    CWnd host;
    if (!host.CreateEx(0, kHostClass, L"", WS_POPUP | WS_VISIBLE, 0, 0, kScreenWidth, kScreenHeight, nullptr, nullptr))
        return std::nullopt;
    {
        HDC dc = ::GetDC(host.m_hWnd);
        HBRUSH brush = CreateSolidBrush(kBackdrop);
        RECT all{0, 0, kScreenWidth, kScreenHeight};
        FillRect(dc, &all, brush);
        DeleteObject(brush);
        ::ReleaseDC(host.m_hWnd, dc);
    }
    const SIZE size = family.windowSize(skin);
    const RECT place{kMargin, kMargin, kMargin + std::max<LONG>(size.cx, 1), kMargin + std::max<LONG>(size.cy, 1)};
    std::unique_ptr<CWnd> control = family.make(host, place, skin, state);
    std::optional<Cell> cell;
    if (control && control->m_hWnd) {
        zel::Desktop::Get().RunUntilIdle();
        RECT rc;
        ::GetWindowRect(control->m_hWnd, &rc);
        cell = Cell{};
        cell->caption = std::wstring(CString(entry.name.c_str())) + L": " + std::wstring(CString(family.states[state]));
        cell->picture = CopyFromScreen(rc);
        cell->width = rc.right - rc.left;
        cell->height = rc.bottom - rc.top;
    }
    host.DestroyWindow();
    control.reset();
    zel::Desktop::Get().Reset({kScreenWidth, kScreenHeight});  // drops any capture or timer a press left
    return cell;
}

struct Placed {
    int x, y;
};

bool Compose(std::vector<Cell>& cells, const std::string& pngPath) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HFONT font = CreateFontW(-12, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    HGDIOBJ oldFont = SelectObject(dc, font);
    // Rows no wider than the screen; a cell is as wide as its picture or its caption.
    std::vector<Placed> places;
    int x = kGap, y = kGap, rowHeight = 0, height = kGap;
    for (Cell& cell : cells) {
        SIZE text{};
        GetTextExtentPoint32W(dc, cell.caption.c_str(), int(cell.caption.size()), &text);
        const int width = std::max<int>(cell.width, text.cx);
        if (x > kGap && x + width + kGap > kScreenWidth) {
            x = kGap;
            y += rowHeight + kGap;
            rowHeight = 0;
        }
        places.push_back({x, y});
        x += width + kGap;
        rowHeight = std::max(rowHeight, kCaptionHeight + cell.height);
        height = y + rowHeight + kGap;
    }
    HBITMAP sheet = CreateCompatibleBitmap(screen, kScreenWidth, height);
    HGDIOBJ oldBitmap = SelectObject(dc, sheet);
    HBRUSH back = CreateSolidBrush(kSheetBack);
    RECT all{0, 0, kScreenWidth, height};
    FillRect(dc, &all, back);
    DeleteObject(back);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, kCaption);
    HDC piece = CreateCompatibleDC(screen);
    for (size_t i = 0; i < cells.size(); ++i) {
        TextOutW(dc, places[i].x, places[i].y + 2, cells[i].caption.c_str(), int(cells[i].caption.size()));
        HGDIOBJ old = SelectObject(piece, cells[i].picture);
        BitBlt(dc, places[i].x, places[i].y + kCaptionHeight, cells[i].width, cells[i].height, piece, 0, 0, SRCCOPY);
        SelectObject(piece, old);
    }
    DeleteDC(piece);
    SelectObject(dc, oldBitmap);
    SelectObject(dc, oldFont);
    DeleteObject(font);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    const bool saved = zel::SaveBitmap(sheet, pngPath.c_str());
    DeleteObject(sheet);
    return saved;
}

}  // namespace

SheetResult WriteSheet(const SkinSource& skin, const SheetOptions& options, const std::string& pngPath) {
    SheetResult result;
    HINSTANCE module = skin.scriptPath.empty() ? nullptr : zel::LoadResourceModule(skin.scriptPath.c_str());
    std::vector<Cell> cells;
    for (const ControlEntry& entry : skin.controls) {
        if (!options.control.empty() && options.control != entry.name && options.control != entry.className) continue;
        const Family* family = FindFamily(entry.className);
        if (!family || !family->make || family->states.empty()) {
            result.skipped.push_back(entry.Label() + ": no sheet states");
            continue;
        }
        const SpecimenSkin specimen = SkinOf(entry, *family, module);
        for (size_t state = 0; state < family->states.size(); ++state) {
            std::optional<Cell> cell = Paint(entry, *family, specimen, state);
            if (cell)
                cells.push_back(std::move(*cell));
            else
                result.skipped.push_back(entry.Label() + ": " + family->states[state] + " could not be made");
        }
    }
    if (module) zel::FreeResourceModule(module);
    result.cells = int(cells.size());
    if (cells.empty())
        result.error = "nothing to show";
    else if (!Compose(cells, pngPath))
        result.error = "cannot write " + pngPath;
    for (Cell& cell : cells) DeleteObject(cell.picture);
    result.ok = result.error.empty();
    return result;
}

}  // namespace zel::skintool
