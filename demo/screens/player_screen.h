// The media player: what is playing (art, title, a progress bar to seek with, the time),
// the volume, and the play list (a CZELPlayList: numbered tracks, their lengths, the
// playing track as its current row, its own scroll bar).
//
// Its controls are made the ways a device application makes them: the play list by
// subclassing a placeholder child, skinned by file paths; the volume slider with
// Create and a LoadSkin string of file paths; the progress bar by subclassing a
// placeholder child and a skin by identifier from the application's resource handle; the
// transport keys with Create, the round play key swapping its skins between play and pause.
#pragma once

#include <zelctl.h>

#include <CZELBmpButton.h>
#include <CZELButton.h>
#include <CZELPlayList.h>

#include "host/paint_kit.h"
#include "host/screens.h"
#include "screens/playback.h"

namespace zel::demo {

class PlayerScreen : public Screen {
public:
    static constexpr int kListId = 9001;
    static constexpr int kVolumeId = 9101;
    static constexpr int kProgressId = 9102;
    static constexpr int kPreviousId = 2001, kPlayId = 2002, kNextId = 2003;
    static constexpr UINT_PTR kTickTimer = 1;  // one second of playing

    PlayerScreen();
    ~PlayerScreen() override;
    PlayerScreen(const PlayerScreen&) = delete;
    PlayerScreen& operator=(const PlayerScreen&) = delete;

    bool Build(HWND host, const SkinSource& skin) override;
    std::optional<long> ScrollPos(HWND control) const override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Tap(UINT message, POINT point) override;
    void Timer(UINT_PTR id) override;
    void Pause() override;
    void Resume() override;

private:
    bool BuildList(const SkinSource& skin);
    bool BuildVolume(const SkinSource& skin);
    bool BuildProgress();
    bool BuildTransport(const SkinSource& skin);
    void ShowPlayState();
    void TrackChanged(bool follow = true);
    void Invalidate(const RECT& area) const;
    void PaintNowPlaying(HDC frame);
    void PaintRecord(HDC dc, POINT origin) const;
    void PaintLabel(HDC dc, POINT origin) const;
    HBITMAP RenderArt(HDC frame);

    HWND host_ = nullptr;
    Playback playback_;
    CZELPlayList list_;
    CZELSlider volume_;
    CZELSlider progress_;
    CZELButton previous_, next_;
    CZELBmpButton play_;
    // When the tick timer last fired (GetTickCount), or was set: the seconds a hidden
    // player played are counted from it on return.
    DWORD lastTick_ = 0;
    bool shortTick_ = false;  // the tick timer is set to end a second begun before a pause
    HINSTANCE skinModule_ = nullptr;
    HBITMAP background_ = nullptr;  // the application's
    // The art as last drawn over its background, paused [0] and playing [1], with the
    // track colour each shows: play and pause swap them, and one is drawn again (over the
    // record without its label, drawn once) only when the track's colour changes.
    HBITMAP record_ = nullptr;
    HBITMAP art_[2] = {};
    int artLabel_[2] = {-1, -1};
    Font titleFont_{22, FW_BOLD};
    Font textFont_{17};
    Font smallFont_{14};
};

}  // namespace zel::demo
