// Position arithmetic of the scroll bar and the slider.
//
// Positions are `long` as in the controls' interfaces. Products of a pixel span and a range
// are formed 128 bits wide, so extreme ranges never overflow; results are truncated toward
// zero (C's signed division) and saturated to `long`.
#pragma once

#include <windows.h>

namespace zelctl {

// a * b / c, truncated toward zero; 0 when c is 0 (a degenerate range or span).
long ScaleTrunc(long a, long b, long c);

// v brought into [lo, hi]: above hi gives hi, then below lo gives lo.
long ClampPos(__int128 v, long lo, long hi);

// Scroll bar: the thumb's offset from the track's top for a position.
int ScrollThumbOffset(int trackSpan, int thumbSpan, long pos, long min, long max);

// Scroll bar drag, vertical: within half a thumb of either end of the track gives that
// end's limit; in between, the position is measured from the track's top without adding
// the minimum back (intended: a bar whose range starts above 0 reports positions offset by it).
long ScrollDragVertical(int y, const RECT& track, int thumbHeight, long min, long max);

// Scroll bar drag, horizontal: as the vertical case, except that the middle formula adds
// half the thumb where the vertical one subtracts it (intended).
long ScrollDragHorizontal(int x, const RECT& track, int thumbWidth, long min, long max);

// Slider: the thumb centre's x for a position (painted each time).
int SliderThumbCentre(const RECT& channel, int thumbWidth, long pos, long min, long max);

// Slider drag: the position under the pointer, clamped into the range. Vertical sliders
// have their minimum at the bottom.
long SliderDragHorizontal(int x, const RECT& channel, int thumbWidth, long min, long max);
long SliderDragVertical(int y, const RECT& channel, int thumbHeight, long min, long max);

// Slider in move style: the position a press jumps to, clamped into the range.
long SliderJumpHorizontal(int x, const RECT& channel, long min, long max);
long SliderJumpVertical(int y, const RECT& channel, long min, long max);

// Progress style: how many of `pixels` stand for the position (0 for an empty range).
int ProgressSpan(int pixels, long pos, long min, long max);

// Slider SetRange: the position kept when the range changes to [newMin, newMax]
// (newMax > newMin). The rescaled value survives only when it lands exactly on the new
// maximum; every other case (including a value beyond the new maximum) restarts at the
// new minimum.
long SliderRangePos(long pos, long oldMin, long oldMax, long newMin, long newMax);

}  // namespace zelctl
