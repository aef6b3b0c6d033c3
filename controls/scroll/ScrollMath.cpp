#include "ScrollMath.h"

#include <climits>

namespace zelctl {

namespace {

using Wide = __int128;

// Factors are differences of two longs or pixel spans, below 2^64 in magnitude, so their
// product fits an unsigned 128-bit magnitude; the sign is applied after the division,
// which therefore truncates toward zero.
long WideScale(Wide a, Wide b, Wide c) {
    if (c == 0) return 0;
    using Magnitude = unsigned __int128;
    const bool negative = (a < 0) != (b < 0) ? (c > 0) : (c < 0);
    const auto abs = [](Wide v) { return v < 0 ? Magnitude(-v) : Magnitude(v); };
    const Magnitude q = abs(a) * abs(b) / abs(c);
    if (negative) return q > Magnitude(LONG_MAX) + 1 ? LONG_MIN : static_cast<long>(-Wide(q));
    return q > Magnitude(LONG_MAX) ? LONG_MAX : static_cast<long>(q);
}

// A range set without checks (max below min) can put a position far outside its span.
int ToPixel(Wide v) {
    if (v > INT_MAX) return INT_MAX;
    if (v < INT_MIN) return INT_MIN;
    return static_cast<int>(v);
}

}  // namespace

long ScaleTrunc(long a, long b, long c) { return WideScale(a, b, c); }

long ClampPos(__int128 v, long lo, long hi) {
    if (v > hi) v = hi;
    if (v < lo) v = lo;
    return static_cast<long>(v);
}

int ScrollThumbOffset(int trackSpan, int thumbSpan, long pos, long min, long max) {
    return ToPixel(WideScale(Wide(trackSpan) - thumbSpan, Wide(pos) - min, Wide(max) - min));
}

long ScrollDragVertical(int y, const RECT& track, int thumbHeight, long min, long max) {
    const int half = thumbHeight / 2;
    if (y - track.top < half) return min;
    if (track.bottom - y < half) return max;
    return WideScale(Wide(y) - half - track.top, Wide(max) - min, Wide(track.bottom - track.top) - thumbHeight);
}

long ScrollDragHorizontal(int x, const RECT& track, int thumbWidth, long min, long max) {
    const int half = thumbWidth / 2;
    if (x - track.left < half) return min;
    if (track.right - x < half) return max;
    return WideScale(Wide(x) + half - track.left, Wide(max) - min, Wide(track.right - track.left) - thumbWidth);
}

int SliderThumbCentre(const RECT& channel, int thumbWidth, long pos, long min, long max) {
    const Wide start = Wide(channel.left) + thumbWidth / 2;
    const Wide span = Wide(channel.right - channel.left) - thumbWidth;
    return ToPixel(start + WideScale(span, Wide(pos) - min, Wide(max) - min));
}

long SliderDragHorizontal(int x, const RECT& channel, int thumbWidth, long min, long max) {
    const Wide offset = Wide(x) - thumbWidth / 2 - channel.left;
    const Wide span = Wide(channel.right - channel.left) - thumbWidth;
    return ClampPos(Wide(min) + WideScale(offset, Wide(max) - min, span), min, max);
}

long SliderDragVertical(int y, const RECT& channel, int thumbHeight, long min, long max) {
    const Wide offset = Wide(channel.bottom) - thumbHeight / 2 - y;
    const Wide span = Wide(channel.bottom - channel.top) - thumbHeight;
    return ClampPos(Wide(min) + WideScale(offset, Wide(max) - min, span), min, max);
}

long SliderJumpHorizontal(int x, const RECT& channel, long min, long max) {
    return ClampPos(Wide(min) + WideScale(Wide(max) - min, Wide(x) - channel.left, channel.right - channel.left),
                    min, max);
}

long SliderJumpVertical(int y, const RECT& channel, long min, long max) {
    return ClampPos(Wide(min) + WideScale(Wide(max) - min, Wide(channel.bottom) - y, channel.bottom - channel.top),
                    min, max);
}

int ProgressSpan(int pixels, long pos, long min, long max) {
    return ToPixel(WideScale(pixels, Wide(pos) - min, Wide(max) - min));
}

long SliderRangePos(long pos, long oldMin, long oldMax, long newMin, long newMax) {
    const long t = WideScale(Wide(pos) - oldMin, Wide(oldMax) - oldMin, Wide(newMax) - newMin);
    return t == newMax ? t : newMin;
}

}  // namespace zelctl
