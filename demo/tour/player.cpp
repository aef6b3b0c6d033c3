#include "tour/player.h"

#include <cmath>

namespace zel::demo {

POINT DragPoint(int x1, int y1, int x2, int y2, int step, int steps) {
    auto along = [&](int a, int b) {
        return static_cast<LONG>(std::lround(a + (static_cast<double>(b) - a) * step / steps));
    };
    return POINT{along(x1, x2), along(y1, y2)};
}

bool PlayTour(const Tour& tour, TourTarget& target, std::string* error) {
    using Kind = TourStep::Kind;
    std::string screen;
    auto fail = [&](const TourStep& step, const std::string& message) {
        if (error) *error = tour.file + ":" + std::to_string(step.line) + ": " + message;
        return false;
    };
    for (const TourStep& s : tour.steps) {
        switch (s.kind) {
            case Kind::kScreen:
                if (!target.ShowScreen(s.name)) return fail(s, "unknown screen " + Quoted(s.name));
                screen = s.name;
                break;
            case Kind::kTap:
                target.PointerDown(s.x, s.y);
                target.PointerUp(s.x, s.y);
                break;
            case Kind::kDown: target.PointerDown(s.x, s.y); break;
            case Kind::kMove: target.PointerMove(s.x, s.y); break;
            case Kind::kUp: target.PointerUp(s.x, s.y); break;
            case Kind::kDrag:
                target.PointerDown(s.x, s.y);
                for (int i = 1; i <= s.steps; ++i) {
                    POINT p = DragPoint(s.x, s.y, s.x2, s.y2, i, s.steps);
                    target.PointerMove(p.x, p.y);
                }
                target.PointerUp(s.x2, s.y2);
                break;
            case Kind::kKey:
                target.KeyDown(s.vk);
                target.KeyUp(s.vk);
                break;
            case Kind::kWait: target.Advance(s.ms); break;
            case Kind::kShot:
                if (!target.Shot(screen, s.name)) return fail(s, "cannot write the shot " + Quoted(screen + "-" + s.name));
                break;
        }
    }
    return true;
}

}  // namespace zel::demo
