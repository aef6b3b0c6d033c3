// The media player: what is playing (art, title, a progress bar to seek with, the time),
// the volume, and the play list with its scroll bar.
//
// Its controls are made the ways a device application makes them: the scroll bar with
// Create and a skin by resource identifier from an explicit module; the volume slider with
// Create and a LoadSkin string of file paths; the progress bar by subclassing a
// placeholder child and a skin by identifier from the application's resource handle; the
// transport keys with Create, the round play key swapping its skins between play and pause.
#pragma once

#include <zelctl.h>

#include <CZELBmpButton.h>
#include <CZELButton.h>

#include "host/paint_kit.h"
#include "host/screens.h"
#include "screens/playback.h"

namespace zel::demo {

class PlayerScreen : public Screen {
public:
    static constexpr int kListBarId = 9001;
    static constexpr int kVolumeId = 9101;
    static constexpr int kProgressId = 9102;
    static constexpr int kPreviousId = 2001, kPlayId = 2002, kNextId = 2003;
    static constexpr UINT_PTR kTickTimer = 1;  // one second of playing

    PlayerScreen();

    bool Build(HWND host, const SkinSource& skin) override;
    std::optional<long> ScrollPos(HWND control) const override;
    void Paint(HDC frame) override;
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Tap(UINT message, POINT point) override;
    void Timer(UINT_PTR id) override;

private:
    bool BuildListBar(const SkinSource& skin);
    bool BuildVolume(const SkinSource& skin);
    bool BuildProgress();
    bool BuildTransport(const SkinSource& skin);
    void ShowPlayState();
    void TrackChanged();
    void Invalidate(const RECT& area) const;
    void PaintNowPlaying(HDC frame) const;
    void PaintList(HDC frame) const;

    HWND host_ = nullptr;
    Playback playback_;
    ListGeometry list_;
    int firstRow_ = 0;
    CZELScrollbar listBar_;
    CZELSlider volume_;
    CZELSlider progress_;
    CZELButton previous_, next_;
    CZELBmpButton play_;
    HINSTANCE skinModule_ = nullptr;
    Font titleFont_{22, FW_BOLD};
    Font textFont_{17};
    Font smallFont_{14};
};

}  // namespace zel::demo
