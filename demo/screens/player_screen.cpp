#include "screens/player_screen.h"

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
constexpr RECT kProgress{24, 214, 424, 230};
constexpr RECT kTimes{24, 232, 424, 252};
constexpr RECT kPrevious{104, 260, 182, 336};
constexpr RECT kPlay{188, 262, 260, 334};
constexpr RECT kNext{266, 260, 344, 336};
constexpr RECT kVolumeLabel{24, 346, 424, 368};
constexpr RECT kVolume{24, 372, 424, 420};
// Right column: the play list in a panel, its scroll bar along the panel's right side.
constexpr RECT kListPanel{448, 72, 784, 432};
constexpr RECT kListArea{456, 80, 728, 424};
constexpr RECT kListBar{736, 80, 776, 424};
constexpr int kRowHeight = 43;

constexpr int kVolumeStart = 60, kVolumeLine = 5, kVolumePage = 10;

// The colour of the record label in the art, one per track in turn.
constexpr COLORREF kLabels[] = {kAccent, RGB(240, 160, 48), RGB(38, 190, 160), RGB(226, 84, 120)};

CString SkinFile(const SkinSource& skin, const char* piece) { return CString(skin.Path(piece).c_str()); }

RECT Centered(int cx, int cy, int radius) { return RECT{cx - radius, cy - radius, cx + radius, cy + radius}; }

}  // namespace

PlayerScreen::PlayerScreen() : playback_(DemoTracks()), list_{kListArea, kRowHeight} {}

bool PlayerScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    skinModule_ = skin.module;
    if (!BuildListBar(skin) || !BuildVolume(skin) || !BuildProgress() || !BuildTransport(skin)) return false;
    TrackChanged();
    SetTimer(host_, kTickTimer, 1000, nullptr);
    return true;
}

// The bar sizes itself to its skin (track width, two arrows and the track high); moving it
// then stretches the track over the list's height.
bool PlayerScreen::BuildListBar(const SkinSource& skin) {
    if (!listBar_.Create(L"", WS_CHILD | WS_VISIBLE, kListBar, CWnd::FromHandle(host_), kListBarId)) return false;
    listBar_.LoadBitmapW(IDB_SCROLL_THUMB, IDB_SCROLL_THUMB_PRESSED, IDB_SCROLL_TRACK, IDB_SCROLL_UP, IDB_SCROLL_DOWN,
                         IDB_SCROLL_DOWN_PRESSED, IDB_SCROLL_UP_PRESSED, skin.module);
    listBar_.MoveWindow(&kListBar);
    listBar_.SetScrollRange(0, list_.LastFirstRow(playback_.count()));
    listBar_.SetPagesize(list_.VisibleRows());
    listBar_.SetLineSize(1);
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
    Invalidate(RECT{kArt.left, kArt.top, kNowPlaying.right, kNowPlaying.bottom});
}

// The progress bar counts the new track's seconds; the art, the titles and the list's
// highlight change with it.
void PlayerScreen::TrackChanged() {
    progress_.SetRange(0, playback_.current().seconds);
    progress_.SetPos(playback_.elapsed());
    Invalidate(RECT{kArt.left, kArt.top, kNowPlaying.right, kNowPlaying.bottom});
    Invalidate(kTimes);
    Invalidate(kListArea);
}

void PlayerScreen::Invalidate(const RECT& area) const { InvalidateRect(host_, &area, FALSE); }

std::optional<long> PlayerScreen::ScrollPos(HWND control) const {
    if (control == listBar_.m_hWnd) return listBar_.GetScrollPos();
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
    } else if (message == WM_VSCROLL && from == listBar_.m_hWnd) {
        firstRow_ = listBar_.GetScrollPos();
        Invalidate(kListArea);
    } else if (message == WM_HSCROLL && from == volume_.m_hWnd) {
        Invalidate(kVolumeLabel);
    } else if (message == WM_HSCROLL && from == progress_.m_hWnd) {
        playback_.Seek(progress_.GetPos());
        Invalidate(kTimes);
    }
}

// A tap on a row plays it; a tap on the art pauses or resumes.
void PlayerScreen::Tap(UINT message, POINT point) {
    if (message != WM_LBUTTONUP) return;
    const int row = list_.RowAt(point, firstRow_, playback_.count());
    if (row >= 0 && playback_.Select(row)) {
        TrackChanged();
    } else if (PtInRect(&kArt, point)) {
        playback_.SetPlaying(!playback_.playing());
        ShowPlayState();
    }
}

// While the stylus holds the progress bar the person is seeking: the bar is theirs.
void PlayerScreen::Timer(UINT_PTR id) {
    if (id != kTickTimer || !playback_.playing()) return;
    if (playback_.Tick()) {
        TrackChanged();
        return;
    }
    if (GetCapture() != progress_.m_hWnd) progress_.SetPos(playback_.elapsed());
    Invalidate(kTimes);
}

void PlayerScreen::Paint(HDC frame) {
    PaintNowPlaying(frame);
    DrawLabel(frame, FormatTime(playback_.elapsed()), kTimes, smallFont_, kTextDim);
    DrawLabel(frame, FormatTime(-playback_.remaining()), kTimes, smallFont_, kTextDim,
              DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    DrawLabel(frame, L"Volume", kVolumeLabel, textFont_, kText);
    DrawLabel(frame, std::to_wstring(volume_.GetPos()) + L" %", kVolumeLabel, textFont_, kAccentLight,
              DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    PaintList(frame);
}

// The art is a record whose label takes the track's colour; paused, it carries two bars.
void PlayerScreen::PaintNowPlaying(HDC frame) const {
    Panel(frame, kArt, RGB(28, 34, 44), kRule, 16);
    const int cx = (kArt.left + kArt.right) / 2, cy = (kArt.top + kArt.bottom) / 2;
    Disc(frame, Centered(cx, cy, 54), RGB(10, 12, 16), kRule);
    for (int r : {46, 38, 30}) Disc(frame, Centered(cx, cy, r), RGB(10, 12, 16), RGB(30, 36, 46));
    const COLORREF label = kLabels[static_cast<size_t>(playback_.track()) % std::size(kLabels)];
    Disc(frame, Centered(cx, cy, 22), label, label);
    Disc(frame, Centered(cx, cy, 3), kScreen, kScreen);
    if (!playback_.playing()) {
        FillBox(frame, RECT{cx - 10, cy - 12, cx - 4, cy + 12}, kText);
        FillBox(frame, RECT{cx + 4, cy - 12, cx + 10, cy + 12}, kText);
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
    OffsetRect(&line, 0, 24);
    DrawLabel(frame, playback_.playing() ? L"Playing" : L"Paused", line, smallFont_, kAccentLight);
}

// Rows: title over artist, the length on the right; the track playing on an accent band.
void PlayerScreen::PaintList(HDC frame) const {
    Panel(frame, kListPanel, kScreen, kRule, 16);
    const int visible = list_.VisibleRows();
    for (int i = 0; i < visible && firstRow_ + i < playback_.count(); ++i) {
        const int index = firstRow_ + i;
        const Track& t = DemoTracks()[static_cast<size_t>(index)];
        const RECT row = list_.RowRect(i);
        const bool current = index == playback_.track();
        if (current)
            Panel(frame, RECT{row.left, row.top + 1, row.right, row.bottom - 1}, kAccentDeep, kAccent, 10);
        else if (i + 1 < visible)
            FillBox(frame, RECT{row.left + 8, row.bottom - 1, row.right - 8, row.bottom}, kRule);
        DrawLabel(frame, t.title, RECT{row.left + 12, row.top + 3, row.right - 56, row.top + 23}, textFont_,
                  current ? RGB(255, 255, 255) : kText, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        DrawLabel(frame, t.artist, RECT{row.left + 12, row.top + 23, row.right - 56, row.top + 40}, smallFont_,
                  current ? kAccentLight : kTextDim, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        DrawLabel(frame, FormatTime(t.seconds), RECT{row.right - 56, row.top, row.right - 10, row.bottom}, smallFont_,
                  current ? RGB(255, 255, 255) : kTextDim, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    }
}

}  // namespace zel::demo
