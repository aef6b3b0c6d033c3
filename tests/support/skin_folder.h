// Skin pieces for control tests: bitmaps drawn with GDI, saved as .bmp files in a
// temporary folder of their own and removed with it (with any resource module loaded
// from it).
//
// A new family's test writes its pieces once per test (ControlTest gives it `skins`),
// keeps the colours as constants, and hands the control either a skin string or a
// resource module:
//
//   skins.Solid("normal", 78, 76, kRed);
//   skins.Keyed("thumb", 8, 16, kThumb, kMagenta, {{0, 0, 1, 3}});
//   ctl.LoadSkin(skins.Skin({"normal", "focus"}), L"");       // "<dir>/normal.bmp|<dir>/focus.bmp|"
//   ctl.LoadBitmaps(101, skins.Module({{101, "normal"}}));    // freed with the folder
//
// Every writer returns the piece's path (std::string); Path(name) gives it again.
#pragma once

#include <afxwin.h>

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace zel::test {

class SkinFolder {
public:
    SkinFolder();
    ~SkinFolder();
    SkinFolder(const SkinFolder&) = delete;
    SkinFolder& operator=(const SkinFolder&) = delete;

    // A width x height screen-compatible bitmap painted by `paint`, saved as <name>.bmp.
    std::string Draw(const std::string& name, int width, int height, const std::function<void(HDC)>& paint);
    // The same, one pixel at a time.
    std::string Pixels(const std::string& name, int width, int height,
                       const std::function<COLORREF(int x, int y)>& colour);
    std::string Solid(const std::string& name, int width, int height, COLORREF colour);
    // `fill` inside a one-pixel frame of `frame`.
    std::string Framed(const std::string& name, int width, int height, COLORREF fill, COLORREF frame);
    // Bands `band` pixels thick, alternating a and b from the top (rows) or the left
    // (columns).
    std::string Striped(const std::string& name, int width, int height, COLORREF a, COLORREF b, int band,
                        bool columns = false);
    // `face` with rectangles of the transparent `key` colour punched into it.
    std::string Keyed(const std::string& name, int width, int height, COLORREF face, COLORREF key,
                      std::initializer_list<RECT> holes);

    std::string Path(const std::string& name) const;
    // "<path of a>|<path of b>|...|", the skin-string form the controls parse.
    CString Skin(std::initializer_list<std::string> names) const;
    // A resource script with one BITMAP per (identifier, piece name); returns its path.
    std::string Script(const std::vector<std::pair<UINT, std::string>>& bitmaps);
    // That script loaded as a resource module, freed when the folder goes (null on failure,
    // which is also a test failure).
    HINSTANCE Module(const std::vector<std::pair<UINT, std::string>>& bitmaps);

    const std::filesystem::path& Dir() const { return dir_; }

private:
    std::filesystem::path dir_;
    std::vector<HINSTANCE> modules_;
    int scripts_ = 0;
};

// Fills `rc` of `dc` with one colour (a brush of its own, released at once).
void FillBox(HDC dc, const RECT& rc, COLORREF colour);
inline void FillBox(HDC dc, int l, int t, int r, int b, COLORREF colour) { FillBox(dc, RECT{l, t, r, b}, colour); }

}  // namespace zel::test
