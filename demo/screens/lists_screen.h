// The list gallery: the image list in its four drawing styles -- a name list (style 1), a
// name-and-state list with marks (style 2), a numbered four-text list (style 3) and an
// image list in the play layout (style 0) -- each with its own scroll bar. Taps select and
// notify NM_CLICK, a quick second tap NM_DBLCLK; the screen shows the last row chosen.
#pragma once

#include <zelctl.h>

#include <string>

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class ListsScreen : public Screen {
public:
    static constexpr int kNamesId = 1401, kDevicesId = 1402, kTracksId = 1403, kPlaylistId = 1404;

    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

    CZELList& names() { return names_; }
    CZELList& playlist() { return playlist_; }

private:
    bool Make(CZELList& list, const RECT& place, int id, int style, const SkinSource& skin);
    void FillNames();
    void FillDevices();
    void FillTracks(const SkinSource& skin);
    void FillPlaylist(const SkinSource& skin);

    HWND host_ = nullptr;
    CZELList names_, devices_, tracks_, playlist_;
    std::wstring chosen_ = L"Tap a row; tap it again quickly to open it.";

    Font sectionFont_{15, FW_BOLD};
    Font textFont_{16};
};

}  // namespace zel::demo
