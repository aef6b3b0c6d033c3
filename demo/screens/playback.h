// The media player's model, free of windows: the play list, the track playing and how far
// into it, and the geometry of the list the screen draws.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace zel::demo {

struct Track {
    const wchar_t* title;
    const wchar_t* artist;
    int seconds;  // length
};

// The demo's play list.
const std::vector<Track>& DemoTracks();

// "m:ss" ("0:07", "12:34"); a negative value gets a leading minus (time left).
std::wstring FormatTime(int seconds);

class Playback {
public:
    explicit Playback(const std::vector<Track>& tracks) : tracks_(tracks) {}

    int track() const { return track_; }
    const Track& current() const { return tracks_[static_cast<size_t>(track_)]; }
    int elapsed() const { return elapsed_; }
    int remaining() const { return current().seconds - elapsed_; }
    bool playing() const { return playing_; }
    int count() const { return static_cast<int>(tracks_.size()); }

    // Starts the track from its beginning; false (nothing changes) for an index outside
    // the list.
    bool Select(int track);
    // One second of playing (nothing while paused). At the end of a track the next one
    // starts (after the last, the first). True when the track changed.
    bool Tick();
    // Clamped into the track.
    void Seek(int seconds);
    void Next();
    // Back to the start of the track, or to the previous track when the track is in its
    // first three seconds: the convention of a car's skip-back key.
    void Previous();
    void SetPlaying(bool playing) { playing_ = playing; }

private:
    const std::vector<Track>& tracks_;
    int track_ = 0;
    int elapsed_ = 0;
    bool playing_ = true;
};

// Rows of equal height from the top of `area`; row `first` of the list is at the top.
struct ListGeometry {
    RECT area{};
    int rowHeight = 1;

    int VisibleRows() const { return (area.bottom - area.top) / rowHeight; }
    // The list index under point, or -1 (outside the area, or below the list's end).
    int RowAt(POINT point, int first, int count) const;
    // The rectangle of the visible row `visible` (0 at the top).
    RECT RowRect(int visible) const;
    // The largest useful first row: the list's end at the area's bottom.
    int LastFirstRow(int count) const;
};

}  // namespace zel::demo
