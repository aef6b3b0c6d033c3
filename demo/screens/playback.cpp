#include "screens/playback.h"

#include <algorithm>
#include <cstdlib>

namespace zel::demo {

const std::vector<Track>& DemoTracks() {
    static const std::vector<Track> tracks = {
        {L"Coastal Drive", L"The Night Lanes", 227},       {L"Amber Signals", L"Northbound", 194},
        {L"Low Sun Over Tarmac", L"Mara Vey", 251},         {L"Kilometre Zero", L"The Night Lanes", 183},
        {L"Harbour Lights", L"Sofia Lund", 262},            {L"Rain on the Windscreen", L"Velvet Static", 205},
        {L"Service Station 3 AM", L"Northbound", 176},     {L"Overpass", L"Kite Theory", 239},
        {L"Slow Exit", L"Mara Vey", 218},                   {L"Glass Horizon", L"Velvet Static", 301},
        {L"Tunnel Echoes", L"Kite Theory", 166},            {L"Long Way Round", L"Sofia Lund", 284},
        {L"Cruise Control", L"The Night Lanes", 199},       {L"Fuel and Starlight", L"Northbound", 232},
        {L"Left at the Lighthouse", L"Mara Vey", 207},     {L"Median Strip", L"Kite Theory", 188},
        {L"Cold Engine Morning", L"Velvet Static", 243},    {L"Mile Markers", L"Sofia Lund", 171},
        {L"Dashboard Glow", L"The Night Lanes", 258},       {L"Border Crossing", L"Northbound", 224},
        {L"Parallel Roads", L"Kite Theory", 196},           {L"Headlights Fade", L"Mara Vey", 273},
        {L"Almost Home", L"Sofia Lund", 212},               {L"Engine Off", L"Velvet Static", 159},
    };
    return tracks;
}

std::wstring FormatTime(int seconds) {
    const int magnitude = std::abs(seconds);
    wchar_t text[24];
    std::swprintf(text, sizeof text / sizeof text[0], L"%ls%d:%02d", seconds < 0 ? L"-" : L"", magnitude / 60,
                  magnitude % 60);
    return text;
}

bool Playback::Select(int track) {
    if (track < 0 || track >= count()) return false;
    track_ = track;
    elapsed_ = 0;
    return true;
}

bool Playback::Tick() {
    if (!playing_) return false;
    if (++elapsed_ < current().seconds) return false;
    Next();
    return true;
}

void Playback::Seek(int seconds) { elapsed_ = std::clamp(seconds, 0, current().seconds); }

void Playback::Next() { Select((track_ + 1) % count()); }

void Playback::Previous() {
    if (elapsed_ < 3)
        Select((track_ + count() - 1) % count());
    else
        elapsed_ = 0;
}

int ListGeometry::RowAt(POINT point, int first, int count) const {
    if (!PtInRect(&area, point)) return -1;
    const int visible = (point.y - area.top) / rowHeight;
    if (visible >= VisibleRows()) return -1;  // the part-row left over at the bottom
    const int index = first + visible;
    return index >= 0 && index < count ? index : -1;
}

RECT ListGeometry::RowRect(int visible) const {
    const int top = area.top + visible * rowHeight;
    return RECT{area.left, top, area.right, top + rowHeight};
}

int ListGeometry::LastFirstRow(int count) const { return std::max(0, count - VisibleRows()); }

}  // namespace zel::demo
