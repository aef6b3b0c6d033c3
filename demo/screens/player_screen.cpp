#include "screens/player_screen.h"

#include <commctrl.h>

#include <iterator>
#include <string>
#include <utility>

#include "host/placeholder.h"
#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

// Left column: what is playing, the transport keys centred under it, the volume.
constexpr RECT kArt{24, 72, 152, 200};
constexpr RECT kNowPlaying{172, 72, 424, 200};
constexpr RECT kPlayState{172, 168, 424, 198};  // the last line of what is playing
constexpr RECT kProgress{24, 214, 424, 230};
constexpr RECT kTimes{24, 232, 424, 252};
constexpr RECT kPrevious{104, 260, 182, 336};
constexpr RECT kPlay{188, 262, 260, 334};
constexpr RECT kNext{266, 260, 344, 336};
constexpr RECT kVolumeLabel{24, 346, 424, 368};
constexpr RECT kVolume{24, 372, 424, 420};
// Right column: the play list, its scroll bar along its right side.
constexpr RECT kListPanel{448, 72, 784, 432};

constexpr int kVolumeStart = 60, kVolumeLine = 5, kVolumePage = 10;

// The colour of the record label in the art, one per track in turn.
constexpr COLORREF kLabels[] = {kAccent, RGB(240, 160, 48), RGB(38, 190, 160), RGB(226, 84, 120)};

CString SkinFile(const SkinSource& skin, const char* piece) { return CString(skin.Path(piece).c_str()); }

RECT Centered(int cx, int cy, int radius) { return RECT{cx - radius, cy - radius, cx + radius, cy + radius}; }

}  // namespace

PlayerScreen::PlayerScreen() : playback_(DemoTracks()) {}

// The host window, and with it every control, is gone before the screen.
PlayerScreen::~PlayerScreen() {
    for (HBITMAP art : art_)
        if (art) DeleteObject(art);
    if (record_) DeleteObject(record_);
}

bool PlayerScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    skinModule_ = skin.module;
    background_ = skin.background;
    if (!BuildList(skin) || !BuildVolume(skin) || !BuildProgress() || !BuildTransport(skin)) return false;
    TrackChanged();
    SetTimer(host_, kTickTimer, 1000, nullptr);
    lastTick_ = GetTickCount();
    return true;
}

// Rows are "title - artist.mp3" with the length beside them: a long name is shortened
// before its extension. The list's bar is 40 pixels wide, one pixel inside its right edge.
bool PlayerScreen::BuildList(const SkinSource& skin) {
    HWND placeholder = CreatePlaceholder(host_, kListId, kListPanel);
    if (!placeholder || !list_.SubclassWindow(placeholder)) return false;
    list_.LoadScrollBitmap(SkinFile(skin, "scroll_thumb"), SkinFile(skin, "scroll_thumb_pressed"),
                           SkinFile(skin, "scroll_track"), SkinFile(skin, "scroll_up"), SkinFile(skin, "scroll_down"),
                           SkinFile(skin, "scroll_down_pressed"), SkinFile(skin, "scroll_up_pressed"));
    CString pieces;
    for (const char* piece : {"list_frame_tl", "list_frame_bl", "list_frame_tr", "list_frame_br", "list_row_left",
                              "list_row_middle", "list_row_right", "list_current_left", "list_current_middle",
                              "list_current_right"})
        pieces += SkinFile(skin, piece) + L"|";
    list_.LoadSkin(pieces, L"");
    for (int i = 0; i < playback_.count(); ++i) {
        const Track& t = DemoTracks()[static_cast<size_t>(i)];
        const int row = list_.InsertItem(i, (std::wstring(t.title) + L" - " + t.artist + L".mp3").c_str(), true);
        list_.SetItemText(row, 1, FormatTime(t.seconds).c_str());
    }
    return true;
}

bool PlayerScreen::BuildVolume(const SkinSource& skin) {
    if (!volume_.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kVolume, CWnd::FromHandle(host_), kVolumeId))
        return false;
    CString pieces;
    for (const char* piece : {"slider_left_cap", "slider_right_cap", "slider_thumb", "slider_thumb_released",
                              "slider_thumb_pressed", "slider_channel_fill", "slider_channel", "slider_channel_left",
                              "slider_channel_right"})
        pieces += SkinFile(skin, piece) + L"|";
    volume_.LoadSkin(pieces, L"");
    volume_.SetRange(0, 100);
    volume_.SetPos(kVolumeStart);
    volume_.SetLineSize(kVolumeLine);
    volume_.SetPageSize(kVolumePage);
    return true;
}

// Move style: a tap anywhere on the bar seeks there.
bool PlayerScreen::BuildProgress() {
    HWND placeholder = CreatePlaceholder(host_, kProgressId, kProgress);
    if (!placeholder || !progress_.SubclassWindow(placeholder)) return false;
    progress_.LoadBitmapW(IDB_PROGRESS_BACK, IDB_PROGRESS_FILL, nullptr);
    progress_.SetStyle(1);
    progress_.SetMoveStyle(true);
    return true;
}

// Previous and next are path-skinned push buttons (78 x 76: stepped corners); play is the
// round button, whose window is the disc of its skin.
bool PlayerScreen::BuildTransport(const SkinSource& skin) {
    CWnd* parent = CWnd::FromHandle(host_);
    const DWORD style = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
    if (!previous_.Create(L"", style, kPrevious, parent, kPreviousId, false) ||
        !next_.Create(L"", style, kNext, parent, kNextId, false) ||
        !play_.Create(L"", style, kPlay, parent, kPlayId))
        return false;
    for (auto [button, glyph] : {std::pair{&previous_, "prev"}, std::pair{&next_, "next"}}) {
        CString pieces;
        for (const char* state : {"normal", "focus", "pressed", "disabled"})
            pieces += SkinFile(skin, ("button_" + std::string(glyph) + "_" + state).c_str()) + L"|";
        button->LoadSkin(pieces, L"");
    }
    ShowPlayState();
    return true;
}

// The key shows what a tap will do: pause while playing, play while paused.
void PlayerScreen::ShowPlayState() {
    if (playback_.playing())
        play_.LoadBitmaps(IDB_ROUND_PAUSE_NORMAL, IDB_ROUND_PAUSE_FOCUS, IDB_ROUND_PAUSE_PRESSED,
                          IDB_ROUND_PAUSE_DISABLED, skinModule_);
    else
        play_.LoadBitmaps(IDB_ROUND_PLAY_NORMAL, IDB_ROUND_PLAY_FOCUS, IDB_ROUND_PLAY_PRESSED, IDB_ROUND_PLAY_DISABLED,
                          skinModule_);
    Invalidate(kArt);  // the label's bars
    Invalidate(kPlayState);
}

// The progress bar counts the new track's seconds; the art, the titles and the list's
// current row change with it (and the list scrolls to it, unless it was tapped there).
void PlayerScreen::TrackChanged(bool follow) {
    progress_.SetRange(0, playback_.current().seconds);
    progress_.SetPos(playback_.elapsed());
    Invalidate(RECT{kArt.left, kArt.top, kNowPlaying.right, kNowPlaying.bottom});
    Invalidate(kTimes);
    list_.SetCurSel(playback_.track());
    if (follow) list_.ScrollTo(playback_.track() - 3);  // the new track comes into view
    list_.Invalidate(FALSE);
}

void PlayerScreen::Invalidate(const RECT& area) const { ContentChanged(host_, area); }

std::optional<long> PlayerScreen::ScrollPos(HWND control) const {
    if (control == volume_.m_hWnd) return volume_.GetPos();
    if (control == progress_.m_hWnd) return progress_.GetPos();
    return std::nullopt;
}

void PlayerScreen::Heard(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND from = reinterpret_cast<HWND>(lParam);
    if (message == WM_COMMAND) {
        switch (LOWORD(wParam)) {
            case kPreviousId: playback_.Previous(); TrackChanged(); break;
            case kNextId: playback_.Next(); TrackChanged(); break;
            case kPlayId: playback_.SetPlaying(!playback_.playing()); ShowPlayState(); break;
            default: break;
        }
    } else if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->hwndFrom == list_.m_hWnd) {
        // A tap on a row has made it the list's current row: play it.
        if (reinterpret_cast<const NMHDR*>(lParam)->code == NM_CLICK && playback_.Select(list_.GetCurSel()))
            TrackChanged(false);
    } else if (message == WM_HSCROLL && from == volume_.m_hWnd) {
        Invalidate(kVolumeLabel);
    } else if (message == WM_HSCROLL && from == progress_.m_hWnd) {
        playback_.Seek(progress_.GetPos());
        Invalidate(kTimes);
    }
}

// A tap on the art pauses or resumes.
void PlayerScreen::Tap(UINT message, POINT point) {
    if (message != WM_LBUTTONUP) return;
    if (PtInRect(&kArt, point)) {
        playback_.SetPlaying(!playback_.playing());
        ShowPlayState();
    }
}

// While the stylus holds the progress bar the person is seeking: the bar is theirs.
void PlayerScreen::Timer(UINT_PTR id) {
    if (id != kTickTimer) return;
    lastTick_ = GetTickCount();
    if (shortTick_) {  // the second begun before the pause is over: whole seconds again
        SetTimer(host_, kTickTimer, 1000, nullptr);
        shortTick_ = false;
    }
    if (!playback_.playing()) return;
    if (playback_.Tick()) {
        TrackChanged();
        return;
    }
    if (GetCapture() != progress_.m_hWnd) progress_.SetPos(playback_.elapsed());
    Invalidate(kTimes);
}

// The music plays on while another screen is shown, as a car's player does when the
// driver looks at the map: only the tick's work on the screen (the progress bar, the
// times, the list following the track) waits until the player is seen again.
void PlayerScreen::Pause() {
    KillTimer(host_, kTickTimer);
    shortTick_ = false;
}

// The seconds that went by hidden are played at once (tracks that ended meanwhile move
// the player on as the tick would), and the next tick comes when the second under way
// ends, not a whole second after the return.
void PlayerScreen::Resume() {
    const DWORD now = GetTickCount();
    const DWORD seconds = (now - lastTick_) / 1000;
    lastTick_ += seconds * 1000;
    bool trackChanged = false;
    for (DWORD s = 0; s < seconds && playback_.playing(); ++s) trackChanged = playback_.Tick() || trackChanged;
    if (trackChanged) {
        TrackChanged();
    } else if (seconds && playback_.playing()) {
        progress_.SetPos(playback_.elapsed());
        Invalidate(kTimes);
    }
    SetTimer(host_, kTickTimer, 1000 - (now - lastTick_), nullptr);
    shortTick_ = true;
}

void PlayerScreen::Paint(HDC frame) {
    PaintNowPlaying(frame);
    DrawLabel(frame, FormatTime(playback_.elapsed()), kTimes, smallFont_, kTextDim);
    DrawLabel(frame, FormatTime(-playback_.remaining()), kTimes, smallFont_, kTextDim,
              DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    DrawLabel(frame, L"Volume", kVolumeLabel, textFont_, kText);
    DrawLabel(frame, std::to_wstring(volume_.GetPos()) + L" %", kVolumeLabel, textFont_, kAccentLight,
              DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
}

// The art is a record whose label takes the track's colour; paused, it carries two bars.
// origin is the art's top left corner in dc. The record itself never changes; the label is
// drawn over it.
void PlayerScreen::PaintRecord(HDC dc, POINT origin) const {
    const int dx = origin.x - kArt.left, dy = origin.y - kArt.top;
    auto at = [&](RECT r) {
        OffsetRect(&r, dx, dy);
        return r;
    };
    Panel(dc, at(kArt), RGB(28, 34, 44), kRule, 16);
    const int cx = (kArt.left + kArt.right) / 2, cy = (kArt.top + kArt.bottom) / 2;
    Disc(dc, at(Centered(cx, cy, 54)), RGB(10, 12, 16), kRule);
    for (int r : {46, 38, 30}) Disc(dc, at(Centered(cx, cy, r)), RGB(10, 12, 16), RGB(30, 36, 46));
}

void PlayerScreen::PaintLabel(HDC dc, POINT origin) const {
    const int dx = origin.x - kArt.left, dy = origin.y - kArt.top;
    auto at = [&](RECT r) {
        OffsetRect(&r, dx, dy);
        return r;
    };
    const int cx = (kArt.left + kArt.right) / 2, cy = (kArt.top + kArt.bottom) / 2;
    const COLORREF label = kLabels[static_cast<size_t>(playback_.track()) % std::size(kLabels)];
    Disc(dc, at(Centered(cx, cy, 22)), label, label);
    Disc(dc, at(Centered(cx, cy, 3)), kScreen, kScreen);
    if (!playback_.playing()) {
        FillBox(dc, at(RECT{cx - 10, cy - 12, cx - 4, cy + 12}), kText);
        FillBox(dc, at(RECT{cx + 4, cy - 12, cx + 10, cy + 12}), kText);
    }
}

namespace {

// Copies w x h pixels from (x, y) of `from` to the origin of `to`.
void CopyBitmap(HDC like, HBITMAP to, HBITMAP from, int x, int y, int w, int h) {
    HDC target = CreateCompatibleDC(like), source = CreateCompatibleDC(like);
    if (target && source) {
        HGDIOBJ oldTarget = SelectObject(target, to), oldSource = SelectObject(source, from);
        BitBlt(target, 0, 0, w, h, source, x, y, SRCCOPY);
        SelectObject(source, oldSource);
        SelectObject(target, oldTarget);
    }
    if (source) DeleteDC(source);
    if (target) DeleteDC(target);
}

}  // namespace

// The art for the play state over its background, drawn into art_ when the track's colour
// has changed since (the record under the label into record_, once). Null when no bitmap
// can be had: the art is then drawn straight into the frame.
HBITMAP PlayerScreen::RenderArt(HDC frame) {
    const int label = playback_.track() % static_cast<int>(std::size(kLabels));
    const size_t state = playback_.playing() ? 1 : 0;
    HBITMAP& art = art_[state];
    if (art && label == artLabel_[state]) return art;
    const int w = kArt.right - kArt.left, h = kArt.bottom - kArt.top;
    auto drawOn = [&](HBITMAP bitmap, auto&& draw) {
        HDC dc = CreateCompatibleDC(frame);
        if (!dc) return false;
        HGDIOBJ old = SelectObject(dc, bitmap);
        draw(dc);
        SelectObject(dc, old);
        DeleteDC(dc);
        return true;
    };
    if (!record_) {
        record_ = CreateCompatibleBitmap(frame, w, h);
        if (!record_) return nullptr;
        if (background_)
            CopyBitmap(frame, record_, background_, kArt.left, kArt.top, w, h);
        else
            drawOn(record_, [&](HDC dc) { FillBox(dc, RECT{0, 0, w, h}, kScreen); });
        if (!drawOn(record_, [&](HDC dc) { PaintRecord(dc, POINT{0, 0}); })) return nullptr;
    }
    if (!art) art = CreateCompatibleBitmap(frame, w, h);
    if (!art) return nullptr;
    artLabel_[state] = -1;  // not what it shows until drawn
    CopyBitmap(frame, art, record_, 0, 0, w, h);
    if (!drawOn(art, [&](HDC dc) { PaintLabel(dc, POINT{0, 0}); })) return nullptr;
    artLabel_[state] = label;
    return art;
}

void PlayerScreen::PaintNowPlaying(HDC frame) {
    RECT clip, meet;
    if (GetClipBox(frame, &clip) > NULLREGION && IntersectRect(&meet, &clip, &kArt)) {
        HBITMAP picture = RenderArt(frame);
        HDC art = picture ? CreateCompatibleDC(frame) : nullptr;
        if (art) {
            HGDIOBJ old = SelectObject(art, picture);
            BitBlt(frame, kArt.left, kArt.top, kArt.right - kArt.left, kArt.bottom - kArt.top, art, 0, 0, SRCCOPY);
            SelectObject(art, old);
            DeleteDC(art);
        } else {
            PaintRecord(frame, POINT{kArt.left, kArt.top});
            PaintLabel(frame, POINT{kArt.left, kArt.top});
        }
    }

    const Track& t = playback_.current();
    RECT line = kNowPlaying;
    line.top += 2;
    line.bottom = line.top + 30;
    DrawLabel(frame, t.title, line, titleFont_, kText, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    OffsetRect(&line, 0, 30);
    DrawLabel(frame, t.artist, line, textFont_, kTextDim, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    OffsetRect(&line, 0, 40);
    std::wstring where = L"Track " + std::to_wstring(playback_.track() + 1) + L" of " +
                         std::to_wstring(playback_.count());
    DrawLabel(frame, where, line, smallFont_, kTextDim);
    DrawLabel(frame, playback_.playing() ? L"Playing" : L"Paused", kPlayState, smallFont_, kAccentLight);
}

}  // namespace zel::demo
