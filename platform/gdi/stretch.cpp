// StretchBlt: resampling blits.
//
// Each axis is planned once per call: for every destination pixel inside the clip box, the
// source pixels that make it (surface coordinates, those outside the source surface left
// out). Rows are then produced from the plans without any per-pixel arithmetic.
//
// Sampling, per axis with S source and D destination pixels counted from each origin edge:
// enlarging (D >= S), destination i takes source ceil((2i+1)S / 2D) - 1, the pixel under its
// centre with a tie going to the lower index; shrinking, source j belongs to destination
// ceil((2j+1)D / 2S) - 1 and the stretch mode merges each group: COLORONCOLOR keeps the first
// row and the last column of a group, BLACKONWHITE ANDs and WHITEONBLACK ORs the raw pixels.
//
// HALFTONE (the same value as CE's BILINEAR) filters colour: bilinear interpolation between
// the two source pixels around the sample centre when enlarging, an area average of the
// covered source pixels when shrinking. As on CE it applies only to colour destinations and
// SRCCOPY, SRCAND and SRCPAINT; anything else falls back to COLORONCOLOR (colour) or
// BLACKONWHITE (monochrome). Filtered pixels are written with a zero top byte.
#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <utility>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

#include "gdi/raster.h"

namespace zel::gdi {

namespace {

using i64 = int64_t;
using i128 = __int128;

constexpr uint32_t kOne = 1u << 16;  // filter weights of one destination pixel sum to this

i64 FloorDiv(i128 a, i64 b) {
    i128 q = a / b;
    if (a % b != 0 && (a < 0) != (b < 0)) --q;
    return static_cast<i64>(q);
}

// One axis of a stretch: destination pixel i (0-based from the origin edge) lies at surface
// coordinate dStart + dStep * i, source pixel j at sStart + sStep * j.
struct Axis {
    i64 dStart = 0, D = 0;
    int dStep = 1;
    i64 sStart = 0, S = 0;
    int sStep = 1;
};

// A negative extent counts back from the origin pixel: width -w at x covers x - w + 1 .. x,
// on each surface on its own (as PatBlt and BitBlt). The axis mirrors when the signs
// differ; equal negative signs just walk both rectangles forwards from their other edge.
Axis MakeAxis(i64 dOrg, i64 dExt, i64 sOrg, i64 sExt) {
    Axis a;
    if (dExt < 0 && sExt < 0) {
        dOrg += dExt + 1, dExt = -dExt;
        sOrg += sExt + 1, sExt = -sExt;
    }
    a.dStart = dOrg;
    a.dStep = dExt < 0 ? -1 : 1;
    a.D = dExt < 0 ? -dExt : dExt;
    a.sStart = sOrg;
    a.sStep = sExt < 0 ? -1 : 1;
    a.S = sExt < 0 ? -sExt : sExt;
    return a;
}

// A mirrored axis whose source lies partly outside the source surface is clipped as if it
// did not mirror: the destination keeps the run of pixels at the same distance from its
// edges as the visible source has from the source rectangle's, and the mirrored image is
// drawn inside that run. So the visible source is mapped to the destination range
// [D - b, D - a) instead of [a, b) (walk indices from the origin edge), a shift of the whole
// mapping by D - a - b. A mirrored source whose origin pixel alone lies outside (by one
// pixel, on the far side) is the exception: it keeps the plain mapping.
i64 MirrorClipShift(const Axis& a, i64 ja, i64 jb) {
    if (a.dStep == a.sStep) return 0;
    const bool shifts = a.sStep < 0 ? (jb < a.S || ja >= 2) : (ja > 0 || jb < a.S);
    if (!shifts) return 0;
    const i64 lo = static_cast<i64>(i128(ja) * a.D / a.S), hi = static_cast<i64>(i128(jb) * a.D / a.S);
    return a.D - lo - hi;
}

// Which source pixels of a shrunk group make the destination pixel.
enum class Pick { kFirst, kLast, kAll, kFilter };

struct Tap {
    i64 j;
    uint32_t w;
};

void Normalise(std::vector<Tap>& taps) {
    uint64_t total = 0;
    for (const Tap& t : taps) total += t.w;
    if (total == 0) {
        taps.clear();
        return;
    }
    uint32_t used = 0;
    for (size_t k = 0; k + 1 < taps.size(); ++k) {
        taps[k].w = static_cast<uint32_t>(uint64_t{taps[k].w} * kOne / total);
        used += taps[k].w;
    }
    taps.back().w = kOne - used;
}

// floor((a * i + b) / m) and its remainder for consecutive i, one division at the start
// and none per step (a >= 0, m > 0).
class FloorSeq {
public:
    FloorSeq(i64 a, i128 b, i64 m, i64 i) : da_(a / m), ra_(a % m), m_(m) {
        const i128 n = i128(a) * i + b;
        q_ = FloorDiv(n, m);
        r_ = static_cast<i64>(n - i128(q_) * m);
    }
    i64 q() const { return q_; }
    i64 r() const { return r_; }
    void Step(int direction) {
        if (direction > 0) {
            q_ += da_, r_ += ra_;
            if (r_ >= m_) r_ -= m_, ++q_;
        } else {
            q_ -= da_, r_ -= ra_;
            if (r_ < 0) r_ += m_, --q_;
        }
    }

private:
    i64 q_ = 0, r_ = 0;
    const i64 da_, ra_, m_;
};

// The source walk indices that make consecutive destination walk indices, restricted to
// [ja, jb) (the source pixels inside the source surface).
class Sampler {
public:
    Sampler(const Axis& a, i64 i, i64 ja, i64 jb, Pick pick)
        : S_(a.S), D_(a.D), i_(i), ja_(ja), jb_(jb), pick_(pick),
          enlarge_(a.D >= a.S),
          // enlarging: ceil((2i+1)S / 2D) - 1; filtered: the sample centre's cell and offset
          centre_(2 * S_, enlarge_ && pick == Pick::kFilter ? S_ - D_ : S_ + 2 * D_ - 1, 2 * D_, i),
          // shrinking: the group of i starts at floor((2iS - D) / 2D) + 1 and ends where the
          // group of i + 1 starts
          groupLo_(2 * S_, -D_, 2 * D_, i), groupHi_(2 * S_, 2 * S_ - D_, 2 * D_, i),
          // area average: source pixels [floor(iS/D), ceil((i+1)S/D))
          areaLo_(S_, 0, D_, i), areaHi_(S_, S_ + D_ - 1, D_, i) {}

    void Taps(std::vector<Tap>& out) const {
        if (enlarge_) return pick_ == Pick::kFilter ? Bilinear(out) : Nearest(out);
        const i64 glo = std::max(groupLo_.q() + 1, ja_), ghi = std::min(groupHi_.q() + 1, jb_);
        switch (pick_) {
            case Pick::kFirst:
                if (glo < ghi) out.push_back({glo, kOne});
                break;
            case Pick::kLast:
                if (glo < ghi) out.push_back({ghi - 1, kOne});
                break;
            case Pick::kAll:
                for (i64 j = glo; j < ghi; ++j) out.push_back({j, kOne});
                break;
            case Pick::kFilter:
                Area(out);
                break;
        }
    }

    // Whether every destination pixel takes at most one source pixel (nearest sampling,
    // or a shrink keeping one pixel of each group); then Single() gives it.
    bool SingleTap() const {
        return enlarge_ ? pick_ != Pick::kFilter : pick_ == Pick::kFirst || pick_ == Pick::kLast;
    }
    // The one source walk index of the current destination pixel, or -1 when none lies
    // inside the source surface.
    i64 Single() const {
        if (enlarge_) {
            const i64 j = centre_.q() - 1;
            return Inside(j) ? j : -1;
        }
        const i64 glo = std::max(groupLo_.q() + 1, ja_), ghi = std::min(groupHi_.q() + 1, jb_);
        if (glo >= ghi) return -1;
        return pick_ == Pick::kFirst ? glo : ghi - 1;
    }

    void Step(int direction) {
        i_ += direction;
        if (enlarge_) {
            centre_.Step(direction);
        } else if (pick_ == Pick::kFilter) {
            areaLo_.Step(direction);
            areaHi_.Step(direction);
        } else {
            groupLo_.Step(direction);
            groupHi_.Step(direction);
        }
    }

private:
    bool Inside(i64 j) const { return j >= ja_ && j < jb_; }

    void Nearest(std::vector<Tap>& out) const {
        const i64 j = centre_.q() - 1;
        if (Inside(j)) out.push_back({j, kOne});
    }

    // The sample centre (i + 1/2) S/D - 1/2 lies between source pixels j0 and j0 + 1, both
    // clamped to the source rectangle so its edge pixels extend to the destination edges.
    void Bilinear(std::vector<Tap>& out) const {
        const i64 j0 = centre_.q();
        const auto w1 = static_cast<uint32_t>(centre_.r() * i64{kOne} / (2 * D_));
        const i64 a0 = std::clamp<i64>(j0, 0, S_ - 1), a1 = std::clamp<i64>(j0 + 1, 0, S_ - 1);
        if (a0 == a1) {
            if (Inside(a0)) out.push_back({a0, kOne});
        } else {
            if (Inside(a0) && kOne - w1) out.push_back({a0, kOne - w1});
            if (Inside(a1) && w1) out.push_back({a1, w1});
        }
        Normalise(out);
    }

    // Destination i covers [iS, (i+1)S) and source j covers [jD, (j+1)D), in units of 1/D
    // source pixel; each source pixel weighs its overlap (at most min(S, D)).
    void Area(std::vector<Tap>& out) const {
        const i128 from = i128(i_) * S_, to = from + S_;
        const i64 lo = std::max(areaLo_.q(), ja_), hi = std::min(areaHi_.q(), jb_);
        for (i64 j = lo; j < hi; ++j) {
            const i128 overlap = std::min(to, i128(j + 1) * D_) - std::max(from, i128(j) * D_);
            if (overlap > 0) out.push_back({j, static_cast<uint32_t>(overlap)});
        }
        Normalise(out);
    }

    const i64 S_, D_;
    i64 i_;
    const i64 ja_, jb_;
    const Pick pick_;
    const bool enlarge_;
    FloorSeq centre_, groupLo_, groupHi_, areaLo_, areaHi_;
};

// For each destination coordinate in [lo, hi), its source coordinates (and filter weights).
struct AxisPlan {
    int lo = 0, hi = 0;
    std::vector<int> first;  // hi - lo + 1 offsets into taps
    std::vector<int> taps;
    std::vector<uint32_t> weights;
    bool single = true;  // one tap per destination pixel: taps[c - lo] is it
    int step = 0;        // single taps advancing by this many source pixels each (0: irregular)
    int minTap = 0, maxTap = -1;
    bool constant = false;  // single taps that are all the same source pixel
    // Single taps repeating each source pixel four times or more on average (a narrow skin
    // piece stretched across): for each destination pixel, the end of its run of equal
    // taps, so rows are filled run by run. Empty otherwise.
    std::vector<int> runEnd;

    bool Empty() const { return lo >= hi; }
};

AxisPlan PlanAxis(Axis a, int clipLo, int clipHi, int limit, Pick pick) {
    AxisPlan p;
    // Walk indices of source pixels inside the source surface.
    i64 ja = a.sStep > 0 ? -a.sStart : a.sStart - limit + 1;
    i64 jb = a.sStep > 0 ? limit - a.sStart : a.sStart + 1;
    ja = std::max<i64>(ja, 0);
    jb = std::min(jb, a.S);
    if (ja >= jb) return p;
    a.dStart += a.dStep * MirrorClipShift(a, ja, jb);
    const i64 dlo = a.dStep > 0 ? a.dStart : a.dStart - a.D + 1;
    const i64 from = std::max<i64>(dlo, clipLo), to = std::min<i64>(dlo + a.D, clipHi);
    if (from >= to) return p;

    p.taps.reserve(static_cast<size_t>(to - from));
    p.first.reserve(static_cast<size_t>(to - from) + 1);
    std::vector<Tap> cur;
    bool started = false;
    Sampler sampler(a, (from - a.dStart) * a.dStep, ja, jb, pick);
    if (sampler.SingleTap()) {
        // One source pixel per destination pixel: no tap list per pixel. The pixels with a
        // source still form one run. An axis of equal extents that does not mirror maps
        // walk index i to i itself.
        const bool identity = a.D == a.S && a.dStep == a.sStep;
        if (identity && a.dStep == 1) {
            // Walk index c - dStart is source index j itself: the pixels with a source are
            // those whose index lies in [ja, jb), one run of consecutive taps.
            const i64 lo = std::max<i64>(from, a.dStart + ja), hi = std::min<i64>(to, a.dStart + jb);
            if (lo >= hi) return p;
            const size_t n = static_cast<size_t>(hi - lo);
            const int first = static_cast<int>(a.sStart + (lo - a.dStart));
            p.lo = static_cast<int>(lo);
            p.hi = static_cast<int>(hi);
            p.taps.resize(n);
            p.first.resize(n + 1);
            for (size_t k = 0; k < n; ++k) p.taps[k] = first + static_cast<int>(k);
            for (size_t k = 0; k <= n; ++k) p.first[k] = static_cast<int>(k);
            p.minTap = first;
            p.maxTap = first + static_cast<int>(n) - 1;
            p.constant = n == 1;
            p.step = n > 1 ? 1 : 0;
            return p;
        }
        i64 i = (from - a.dStart) * a.dStep;
        for (i64 c = from; c < to; ++c, i += a.dStep) {
            i64 j;
            if (identity) {
                j = i >= ja && i < jb ? i : -1;
            } else {
                j = sampler.Single();
                sampler.Step(a.dStep);
            }
            if (j < 0) {
                if (started) break;
                continue;
            }
            if (!started) {
                started = true;
                p.lo = static_cast<int>(c);
            }
            p.taps.push_back(static_cast<int>(a.sStart + a.sStep * j));
            p.hi = static_cast<int>(c) + 1;
        }
        p.first.resize(p.taps.size() + (started ? 1 : 0));
        for (size_t k = 0; k < p.first.size(); ++k) p.first[k] = static_cast<int>(k);
    } else {
    for (i64 c = from; c < to; ++c, sampler.Step(a.dStep)) {
        cur.clear();
        sampler.Taps(cur);
        // The sampling is monotonic, so the pixels with a source form one run.
        if (cur.empty()) {
            if (started) break;
            continue;
        }
        if (!started) {
            started = true;
            p.lo = static_cast<int>(c);
            p.first.push_back(0);
        }
        for (const Tap& t : cur) {
            int sc = static_cast<int>(a.sStart + a.sStep * t.j);
            p.taps.push_back(sc);
            if (pick == Pick::kFilter) p.weights.push_back(t.w);
        }
        p.first.push_back(static_cast<int>(p.taps.size()));
        p.hi = static_cast<int>(c) + 1;
        if (cur.size() != 1) p.single = false;
    }
    }
    if (!p.taps.empty()) {
        auto [lo, hi] = std::minmax_element(p.taps.begin(), p.taps.end());
        p.minTap = *lo;
        p.maxTap = *hi;
    }
    p.constant = p.single && !p.taps.empty() && p.minTap == p.maxTap;
    if (p.single && !p.constant && a.D >= 4 * a.S) {
        p.runEnd.resize(p.taps.size());
        for (size_t k = p.taps.size(); k-- > 0;)
            p.runEnd[k] = k + 1 < p.taps.size() && p.taps[k + 1] == p.taps[k] ? p.runEnd[k + 1] : static_cast<int>(k) + 1;
    }
    if (p.single && p.taps.size() > 1) {
        int step = p.taps[1] - p.taps[0];
        for (size_t k = 2; k < p.taps.size() && step > 0; ++k)
            if (p.taps[k] - p.taps[k - 1] != step) step = 0;
        p.step = std::max(step, 0);
    }
    return p;
}

// The same axis is planned again and again: each row of a list stretches its middle piece
// over the same columns, a frame's edges over the same rows, and a screen shown again
// stretches what it stretched the last time. Plans are kept (per thread) by everything
// they depend on, relative to the destination's start: a plan moves with its destination
// (only its first and last pixel change), so the same stretch elsewhere shares it.
std::shared_ptr<const AxisPlan> PlanAxisCached(const Axis& a, int clipLo, int clipHi, int limit, Pick pick) {
    // An axis of equal extents plans without sampling: keeping it would only push out the
    // plans worth keeping (each row of a list has its own).
    if (a.D == a.S && a.dStep == a.sStep) return std::make_shared<const AxisPlan>(PlanAxis(a, clipLo, clipHi, limit, pick));
    const i64 lo = clipLo - a.dStart, hi = clipHi - a.dStart;
    if (lo < INT_MIN || hi > INT_MAX) return std::make_shared<const AxisPlan>(PlanAxis(a, clipLo, clipHi, limit, pick));
    struct Entry {
        i64 D = 0, sStart = 0, S = 0;
        int dStep = 0, sStep = 0, clipLo = 0, clipHi = 0, limit = 0;
        Pick pick = Pick::kFirst;
        std::shared_ptr<const AxisPlan> plan;  // planned with the destination starting at 0
        i64 movedTo = 0;                        // the last start it was moved to, and that copy
        std::shared_ptr<const AxisPlan> moved;
    };
    // Enough for the stretches of a few screens. A plan of more taps than this (16 bytes or
    // so each, with its copy moved elsewhere) is not kept: at most about 4 MiB kept.
    constexpr size_t kKept = 64;
    constexpr size_t kMaxKeptTaps = 2048;
    thread_local Entry kept[kKept];
    thread_local size_t next = 0;
    Axis at0 = a;
    at0.dStart = 0;
    Entry want{a.D, a.sStart, a.S, a.dStep, a.sStep, static_cast<int>(lo), static_cast<int>(hi), limit, pick, nullptr, 0, nullptr};
    Entry* entry = nullptr;
    for (Entry& e : kept)
        if (e.plan && e.D == want.D && e.clipLo == want.clipLo && e.clipHi == want.clipHi && e.sStart == want.sStart &&
            e.S == want.S && e.dStep == want.dStep && e.sStep == want.sStep && e.limit == want.limit && e.pick == want.pick) {
            entry = &e;
            break;
        }
    if (!entry) {
        want.plan = std::make_shared<const AxisPlan>(PlanAxis(at0, want.clipLo, want.clipHi, limit, pick));
        if (want.plan->taps.size() > kMaxKeptTaps) entry = &want;
        else entry = &(kept[next] = std::move(want)), next = (next + 1) % kKept;
    }
    if (a.dStart == 0 || entry->plan->Empty()) return entry->plan;
    if (!entry->moved || entry->movedTo != a.dStart) {
        auto moved = std::make_shared<AxisPlan>(*entry->plan);
        moved->lo += static_cast<int>(a.dStart);
        moved->hi += static_cast<int>(a.dStart);
        entry->moved = std::move(moved);
        entry->movedTo = a.dStart;
    }
    return entry->moved;
}

// Shrinking modes' choice per axis; enlarging ignores it (except filtering).
Pick PickFor(int mode, bool horizontal) {
    switch (mode) {
        case BLACKONWHITE:
        case WHITEONBLACK: return Pick::kAll;
        case HALFTONE: return Pick::kFilter;
        default: return horizontal ? Pick::kLast : Pick::kFirst;
    }
}

struct And {
    uint32_t operator()(uint32_t a, uint32_t b) const { return a & b; }
};
struct Or {
    uint32_t operator()(uint32_t a, uint32_t b) const { return a | b; }
};

// Merges the rows of a shrunk group: acc[k] = op(acc[k], v[k]).
template <class Op>
void MergeRows(uint32_t* acc, const uint32_t* v, int n) {
    for (int k = 0; k < n; ++k) acc[k] = Op{}(acc[k], v[k]);
}

// Merges each horizontal group of a source row into one destination pixel.
template <class Op>
void MergeColumns(const uint32_t* src, const int* first, const int* taps, int n, uint32_t* out) {
    for (int k = 0; k < n; ++k) {
        uint32_t v = src[taps[first[k]]];
        for (int f = first[k] + 1; f < first[k + 1]; ++f) v = Op{}(v, src[taps[f]]);
        out[k] = v;
    }
}

using Quad = uint32_t __attribute__((vector_size(16)));

// Single-tap horizontal sampling of n pixels. src points at the first pixel's source, with
// `avail` pixels readable from there; idx holds the n source coordinates (step: their
// constant difference, when the plan has one).
using GatherFn = void (*)(const uint32_t* src, int avail, const int* idx, int step, int n, uint32_t* out);

void GatherTable(const uint32_t* src, int, const int* idx, int, int n, uint32_t* out) {
    const int base = idx[0];
    for (int k = 0; k < n; ++k) out[k] = src[idx[k] - base];
}
void GatherRun(const uint32_t* src, int, const int*, int, int n, uint32_t* out) {
    CopyPixels(out, src, static_cast<size_t>(n));
}
// Halving: every other pixel, four at a time. The vector loop stops early enough never to
// read past the last sampled pixel.
void GatherEven(const uint32_t* src, int, const int*, int, int n, uint32_t* out) {
    int k = 0;
    for (; k + 5 <= n; k += 4) {
        Quad a, b;
        std::memcpy(&a, src + 2 * k, sizeof a);
        std::memcpy(&b, src + 2 * k + 4, sizeof b);
        Quad even = __builtin_shufflevector(a, b, 0, 2, 4, 6);
        std::memcpy(out + k, &even, sizeof even);
    }
    for (; k < n; ++k) out[k] = src[2 * k];
}
// A one-pixel-wide source stretched across: the row is one value.
void GatherFill(const uint32_t* src, int, const int*, int, int n, uint32_t* out) { FillPixels(out, static_cast<size_t>(n), *src); }
void GatherStrided(const uint32_t* src, int, const int*, int step, int n, uint32_t* out) {
    for (int k = 0; k < n; ++k) out[k] = src[static_cast<ptrdiff_t>(k) * step];
}

#if defined(__x86_64__) || defined(__i386__)
// With AVX2, eight destination pixels whose sources lie within 8 (or 16) consecutive source
// pixels come from one (or two) unaligned loads and a lane permutation: that covers every
// enlargement and shrinking down to one half. Blocks that do not fit fall back to scalar.
__attribute__((target("avx2"))) void GatherTableAvx2(const uint32_t* src, int avail, const int* idx, int, int n,
                                                     uint32_t* out) {
    const int base = idx[0];
    int k = 0;
    for (; k + 8 <= n; k += 8) {
        const int first = idx[k] - base, span = idx[k + 7] - idx[k];
        const __m256i rel = _mm256_sub_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(idx + k)),
                                             _mm256_set1_epi32(idx[k]));
        const auto* at = reinterpret_cast<const __m256i*>(src + first);
        __m256i v;
        if (span >= 0 && span < 8 && first + 8 <= avail) {
            v = _mm256_permutevar8x32_epi32(_mm256_loadu_si256(at), rel);
        } else if (span >= 0 && span < 16 && first + 16 <= avail) {
            const __m256i lo = _mm256_permutevar8x32_epi32(_mm256_loadu_si256(at), rel);
            const __m256i hi = _mm256_permutevar8x32_epi32(_mm256_loadu_si256(at + 1), rel);
            v = _mm256_blendv_epi8(lo, hi, _mm256_cmpgt_epi32(rel, _mm256_set1_epi32(7)));
        } else {
            for (int q = 0; q < 8; ++q) out[k + q] = src[idx[k + q] - base];
            continue;
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + k), v);
    }
    for (; k < n; ++k) out[k] = src[idx[k] - base];
}

GatherFn TableGather() {
    static const GatherFn best = __builtin_cpu_supports("avx2") ? &GatherTableAvx2 : &GatherTable;
    return best;
}
#else
GatherFn TableGather() { return &GatherTable; }
#endif

// The sampling routine for a plan, chosen once per call.
GatherFn GatherFor(const AxisPlan& px) {
    if (px.constant) return &GatherFill;
    switch (px.step) {
        case 0: return TableGather();
        case 1: return &GatherRun;
        case 2: return &GatherEven;
        default: return &GatherStrided;
    }
}

// Rows of one stretch. The source rows handed out are in the destination's format.
class Stretcher {
public:
    Stretcher(DC& dst, PixelBuffer& target, const PixelBuffer& source, const RowConverter& conv,
              const AxisPlan& px, const AxisPlan& py, int mode, RopApplier& applier, bool plainCopy)
        : dst_(dst), t_(target), s_(source), conv_(conv), px_(px), py_(py), applier_(applier),
          direct_(plainCopy && conv.Identity() && px.single && py.single) {
        if (mode == WHITEONBLACK) mergeRows_ = &MergeRows<Or>, mergeColumns_ = &MergeColumns<Or>;
        filter_ = mode == HALFTONE;
        const size_t w = static_cast<size_t>(t_.width);
        row_.resize(w);
        tmp_.resize(w);
        if (!conv_.Identity()) converted_.resize(static_cast<size_t>(s_.width));
        if (filter_) acc_.resize(3 * w);
        gather_ = GatherFor(px);
    }

    void Run() {
        dst_.ForEachClipped(RECT{px_.lo, py_.lo, px_.hi, py_.hi}, [&](const RECT& r) {
            lastSource_ = -1;
            for (int y = r.top; y < r.bottom; ++y) Row(r, y);
        });
    }

private:
    void Row(const RECT& r, int y) {
        const int n = r.right - r.left;
        pixelsWritten += static_cast<uint64_t>(n);
        uint32_t* d = t_.row(y) + r.left;
        const int v0 = py_.first[y - py_.lo], v1 = py_.first[y - py_.lo + 1];
        if (direct_) {
            // Plain copy: gather straight into the destination; an enlarged row repeats the
            // one above it.
            const int sy = py_.taps[v0];
            if (sy == lastSource_)
                CopyPixels(d, d - t_.width, static_cast<size_t>(n));
            else
                Gather(s_.row(sy), r.left, n, d);
            lastSource_ = sy;
            return;
        }
        if (py_.single && py_.taps[v0] == lastSource_) {
            applier_.Apply(d, row_.data(), r.left, y, n);
            return;
        }
        if (filter_) {
            Filter(r.left, n, v0, v1);
        } else {
            for (int v = v0; v < v1; ++v) {
                uint32_t* out = v == v0 ? row_.data() : tmp_.data();
                Horizontal(SourceRow(py_.taps[v]), r.left, n, out);
                if (v != v0) mergeRows_(row_.data(), out, n);
            }
        }
        lastSource_ = py_.single ? py_.taps[v0] : -1;
        applier_.Apply(d, row_.data(), r.left, y, n);
    }

    // Source row sy in the destination format, indexable by source x over the plan's span.
    const uint32_t* SourceRow(int sy) {
        if (conv_.Identity()) return s_.row(sy);
        conv_.Into(px_.minTap, sy, px_.maxTap - px_.minTap + 1, converted_.data() + px_.minTap);
        return converted_.data();
    }

    void Gather(const uint32_t* src, int x, int n, uint32_t* out) const {
        if (!px_.runEnd.empty()) {
            for (int k = x - px_.lo, end = k + n; k < end;) {
                const int e = std::min(px_.runEnd[k], end);
                FillPixels(out, static_cast<size_t>(e - k), src[px_.taps[k]]);
                out += e - k;
                k = e;
            }
            return;
        }
        const int* idx = px_.taps.data() + (x - px_.lo);
        gather_(src + idx[0], sourceWidth_ - idx[0], idx, px_.step, n, out);
    }

    void Horizontal(const uint32_t* src, int x, int n, uint32_t* out) const {
        if (px_.single) return Gather(src, x, n, out);
        mergeColumns_(src, px_.first.data() + (x - px_.lo), px_.taps.data(), n, out);
    }

    // Weighted average of the red, green and blue channels over the taps of both axes.
    void Filter(int x, int n, int v0, int v1) {
        std::fill(acc_.begin(), acc_.begin() + 3 * n, 0);
        for (int v = v0; v < v1; ++v) {
            const uint32_t* src = SourceRow(py_.taps[v]);
            const uint64_t wy = py_.weights[v];
            for (int k = 0; k < n; ++k) {
                const int f0 = px_.first[x - px_.lo + k], f1 = px_.first[x - px_.lo + k + 1];
                uint32_t r = 0, g = 0, b = 0;
                for (int f = f0; f < f1; ++f) {
                    const uint32_t p = src[px_.taps[f]], w = px_.weights[f];
                    r += ((p >> 16) & 0xFF) * w;
                    g += ((p >> 8) & 0xFF) * w;
                    b += (p & 0xFF) * w;
                }
                acc_[3 * k] += wy * r;
                acc_[3 * k + 1] += wy * g;
                acc_[3 * k + 2] += wy * b;
            }
        }
        constexpr uint64_t kHalf = uint64_t{1} << 31;
        for (int k = 0; k < n; ++k) {
            auto c = [&](int i) { return static_cast<uint32_t>((acc_[3 * k + i] + kHalf) >> 32); };
            row_[k] = (c(0) << 16) | (c(1) << 8) | c(2);
        }
    }

    DC& dst_;
    PixelBuffer& t_;
    const PixelBuffer& s_;
    const RowConverter& conv_;
    const AxisPlan& px_;
    const AxisPlan& py_;
    RopApplier& applier_;
    const bool direct_;
    bool filter_ = false;
    // BLACKONWHITE unless told otherwise; only used by groups of more than one pixel.
    void (*mergeRows_)(uint32_t*, const uint32_t*, int) = &MergeRows<And>;
    void (*mergeColumns_)(const uint32_t*, const int*, const int*, int, uint32_t*) = &MergeColumns<And>;
    GatherFn gather_;
    const int sourceWidth_ = s_.width;  // readable pixels of a source or converted row
    std::vector<uint32_t> row_, tmp_, converted_;
    std::vector<uint64_t> acc_;
    int lastSource_ = -1;
};

bool Filterable(uint8_t rop) { return rop == 0xCC || rop == 0x88 || rop == 0xEE; }

void StretchCore(DC& dst, DC& src, const Axis& ax, const Axis& ay, uint8_t rop) {
    const PixelBuffer* shape = dst.TargetShape();
    const PixelBuffer* s = src.TargetShape();  // size only until the destination is materialised
    if (!shape || !s) return;
    const bool mono = shape->mono();
    int mode = dst.state.stretchMode;
    if (mode == HALFTONE && (mono || !Filterable(rop))) mode = mono ? BLACKONWHITE : COLORONCOLOR;

    const std::vector<RECT>& clip = dst.ClipRects();
    if (clip.empty()) return;
    RECT box = clip.front();
    for (const RECT& c : clip) {
        box.left = std::min(box.left, c.left);
        box.right = std::max(box.right, c.right);
        box.bottom = std::max(box.bottom, c.bottom);
    }
    // Rows first: a stretch whose rows all lie outside the clip (a row of a list repainted
    // for another row) plans no columns.
    const auto rows = PlanAxisCached(ay, box.top, box.bottom, s->height, PickFor(mode, false));
    if (rows->Empty()) return;
    const auto columns = PlanAxisCached(ax, box.left, box.right, s->width, PickFor(mode, true));
    if (columns->Empty()) return;
    const AxisPlan &px = *columns, &py = *rows;

    RopApplier applier(dst, rop);
    if (applier.Skip()) return;
    const bool oneSurface = shape == s;  // the source may lie in what is written
    PixelBuffer* t = RopReadsDest(rop) || oneSurface ? dst.Target() : dst.Overwrite(RECT{px.lo, py.lo, px.hi, py.hi});
    s = src.Source();
    // Stretching within one surface reads from a snapshot: no order of rows avoids overlap
    // when the scales differ. Pixels read and pixels written that share no column (a skin's
    // edge column stretched across the middle) or no row need none.
    PixelBuffer snapshot;
    const bool apart = px.maxTap < px.lo || px.minTap >= px.hi || py.maxTap < py.lo || py.minTap >= py.hi;
    if (t == s && !apart) snapshot = *s, s = &snapshot;
    RowConverter conv(dst, *t, src, *s);
    Stretcher(dst, *t, *s, conv, px, py, mode, applier, rop == 0xCC).Run();
}

}  // namespace

}  // namespace zel::gdi

using namespace zel::gdi;

extern "C" {

BOOL StretchBlt(HDC hdcDst, int xDst, int yDst, int wDst, int hDst, HDC hdcSrc, int xSrc, int ySrc, int wSrc,
                int hSrc, DWORD rop) {
    DC* dst = LookupDC(hdcDst);
    if (!dst) return FALSE;
    if (!RopUsesSource(rop)) return PatBlt(hdcDst, xDst, yDst, wDst, hDst, rop);
    DC* src = LookupDC(hdcSrc);
    if (!src) return FALSE;
    if (wDst == 0 || hDst == 0 || wSrc == 0 || hSrc == 0) return TRUE;
    i64 ws = wSrc, hs = hSrc;
    // A one-pixel destination samples a source one pixel shorter.
    if (wDst == 1 && ws > 1) --ws;
    if (hDst == 1 && hs > 1) --hs;
    const bool mirrored = (wDst < 0) != (ws < 0) || (hDst < 0) != (hs < 0);
    Axis ax = MakeAxis(i64{xDst} + dst->origin.x, wDst, i64{xSrc} + src->origin.x, ws);
    Axis ay = MakeAxis(i64{yDst} + dst->origin.y, hDst, i64{ySrc} + src->origin.y, hs);
    if (!mirrored && ax.D == ax.S && ay.D == ay.S) {
        // Same size: the plain blit (sampling is the identity then, whatever the mode).
        i64 dx = ax.sStart - ax.dStart, dy = ay.sStart - ay.dStart;
        constexpr i64 kFar = i64{1} << 29;
        if (dx > kFar || dx < -kFar || dy > kFar || dy < -kFar) return TRUE;
        RECT device = DeviceRect(*dst, ax.dStart - dst->origin.x, ay.dStart - dst->origin.y,
                                 ax.dStart - dst->origin.x + ax.D, ay.dStart - dst->origin.y + ay.D);
        BlitCore(*dst, *src, device, static_cast<int>(dx), static_cast<int>(dy), RopIndex(rop));
        return TRUE;
    }
    StretchCore(*dst, *src, ax, ay, RopIndex(rop));
    return TRUE;
}

}  // extern "C"
