// The device screens of the demo. Each is built as the children of a fresh host window
// and torn down with it.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zel::demo {

// Where a screen takes its skin from: the generated resource module (by identifier) and
// the folder of its bitmap files (by path).
struct SkinSource {
    HINSTANCE module = nullptr;
    std::string bitmapDir;  // ends without a slash; files are <dir>/<piece>.bmp

    std::string Path(const char* piece) const { return bitmapDir + "/" + piece + ".bmp"; }
};

class Screen {
public:
    virtual ~Screen() = default;
    // Creates the screen's controls as children of host. False when one cannot be made.
    virtual bool Build(HWND host, const SkinSource& skin) = 0;
    // The position of one of the screen's scroll controls, for the scroll codes whose
    // message carries none.
    virtual std::optional<long> ScrollPos(HWND control) const { return std::nullopt; }
};

struct ScreenInfo {
    const char* name;      // as tours write it
    const wchar_t* title;  // in the title bar
    std::unique_ptr<Screen> (*make)();
};

const std::vector<ScreenInfo>& Screens();
const ScreenInfo* FindScreen(const std::string& name);

}  // namespace zel::demo
