// Tours: scripted sessions on the demo's screens, one command per line.
//
//   screen NAME               show a screen (later shots are named after it); one shown
//                             before returns as it was left while fewer than five other
//                             screens were shown since (DemoApp::kKeptScreens), otherwise
//                             it is built afresh
//   tap X Y                   stylus down and up at one point
//   down X Y / move X Y / up X Y
//   drag X1 Y1 X2 Y2 [STEPS]  down, STEPS moves along the line (default 10), up at the end
//   key VK_NAME | NUMBER      key down and up (VK_RETURN, VK_DOWN, ..., 13, 0x0D)
//   wait MS                   let time pass (timers fire)
//   shot NAME                 write the screen as <screen>-<NAME>.png
//   # comment                 also after a command; blank lines are ignored
//
// Coordinates are screen pixels. The parser checks the whole file before anything runs:
// a bad line is reported as "file:line: what is wrong".
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zel::demo {

struct TourStep {
    enum class Kind { kScreen, kTap, kDown, kMove, kUp, kDrag, kKey, kWait, kShot };

    Kind kind = Kind::kWait;
    int line = 0;      // 1-based line of the file
    std::string name;  // screen and shot
    int x = 0, y = 0;  // tap, down, move, up; start of a drag
    int x2 = 0, y2 = 0;  // end of a drag
    int steps = 0;     // drag
    UINT vk = 0;       // key
    DWORD ms = 0;      // wait
};

struct Tour {
    std::string file;  // as given, for messages
    std::vector<TourStep> steps;
};

constexpr int kDefaultDragSteps = 10;

// A token as error messages quote it: in single quotes, at most kMaxQuoted characters,
// each byte that is not printable ASCII shown as '?', a longer token cut with "...". A
// megabyte of binary on a command line or in a tour stays one readable line.
constexpr size_t kMaxQuoted = 60;
std::string Quoted(std::string_view token);

// Tours are short hand-written files; anything larger is refused unread.
constexpr size_t kMaxTourBytes = size_t{1} << 20;

// nullopt on the first bad line, with "file:line: message" in *error.
std::optional<Tour> ParseTour(std::string_view text, const std::string& file, std::string* error);
// Only a regular file is read: a directory, a FIFO or a device is refused with a reason,
// as is a file that cannot be read or is larger than kMaxTourBytes.
std::optional<Tour> LoadTour(const std::string& path, std::string* error);

}  // namespace zel::demo
