// Moments in two lanes of double, two rows at once.
#include "geometry/moments.h"
#include "lanes/four_floats.h"

namespace rux::w7 {
namespace {

// Where a row's pixels go: head and tail singly into lane 0, and turns of four between them into both lanes.
struct RowParts {
    int32_t head;
    int32_t turns;
    int32_t tail;

    RowParts(const uint8_t* src, int32_t width)
    {
        const int32_t toBoundary = static_cast<int32_t>(bytesToBoundary(src, 16) / 4);
        head = isAligned(src, 4) && toBoundary < width ? toBoundary : width;
        turns = (width - head) / 4;
        tail = (width - head) % 4;
    }
};

// The sums of one row.
struct LaneSums {
    __m128d s0 = _mm_setzero_pd();
    __m128d s1 = _mm_setzero_pd();
    __m128d s2 = _mm_setzero_pd();
    __m128d s3 = _mm_setzero_pd();

    void addTwo(__m128d term, __m128d x)
    {
        s0 = _mm_add_pd(s0, term);
        term = _mm_mul_pd(term, x);
        s1 = _mm_add_pd(s1, term);
        term = _mm_mul_pd(term, x);
        s2 = _mm_add_pd(s2, term);
        term = _mm_mul_pd(term, x);
        s3 = _mm_add_pd(s3, term);
    }

    void addFour(const uint8_t* src, __m128d x, __m128d nextX)
    {
        const __m128 four = FourFloats::loadAligned(src).value;
        addTwo(_mm_cvtps_pd(four), x);
        addTwo(_mm_cvtps_pd(_mm_movehl_ps(four, four)), nextX);
    }

    // Lane 1 gets 0.0, which leaves it as it is: a sum that starts from 0.0 is never -0.0.
    void addSingly(const uint8_t* src, int32_t pixels, double from)
    {
        for (__m128d x = _mm_set_sd(from); pixels > 0; --pixels, src += 4, x = _mm_add_sd(x, _mm_set_sd(1.0)))
            addTwo(_mm_cvtps_pd(FourFloats::loadOne(src).value), x);
    }

    RowSums folded() const
    {
        return {_mm_cvtsd_f64(s0) + _mm_cvtsd_f64(_mm_unpackhi_pd(s0, s0)),
                _mm_cvtsd_f64(s1) + _mm_cvtsd_f64(_mm_unpackhi_pd(s1, s1)),
                _mm_cvtsd_f64(s2) + _mm_cvtsd_f64(_mm_unpackhi_pd(s2, s2)),
                _mm_cvtsd_f64(s3) + _mm_cvtsd_f64(_mm_unpackhi_pd(s3, s3))};
    }
};

// A row's sums and the place where its next turn begins.
struct Row {
    LaneSums sums;
    const uint8_t* src;
    RowParts parts;

    Row(const uint8_t* first, int32_t width) : src(first), parts(first, width)
    {
        sums.addSingly(src, parts.head, 0.0);
        src += static_cast<ptrdiff_t>(parts.head) * 4;
    }

    // The x of each lane; all of them are whole numbers and exact, however they are formed.
    __m128d lanesOfX() const { return _mm_add_pd(_mm_set1_pd(parts.head), _mm_set_pd(1.0, 0.0)); }

    RowSums finish(int32_t turnsDone)
    {
        __m128d x = _mm_add_pd(lanesOfX(), _mm_set1_pd(4.0 * turnsDone));
        for (; turnsDone < parts.turns; ++turnsDone, src += 16, x = _mm_add_pd(x, _mm_set1_pd(4.0)))
            sums.addFour(src, x, _mm_add_pd(x, _mm_set1_pd(2.0)));
        sums.addSingly(src, parts.tail, parts.head + 4.0 * parts.turns);
        return sums.folded();
    }
};

constexpr ptrdiff_t prefetchDistance = 768;

inline void prefetch(const uint8_t* at)
{
    _mm_prefetch(reinterpret_cast<const char*>(at), _MM_HINT_T0);
}

// A sum is a chain of additions, each waiting for the one before: the chains of a second row fill the waiting. Rows
// that begin alike share x.
template <bool sharedX>
inline void addTurns(Row& upper, Row& lower, int32_t turns)
{
    const __m128d two = _mm_set1_pd(2.0);
    __m128d upperX = upper.lanesOfX();
    __m128d lowerX = lower.lanesOfX();
    LaneSums upperSums = upper.sums;
    LaneSums lowerSums = lower.sums;
    const uint8_t* const from = upper.src;
    const ptrdiff_t toLower = lower.src - from;
    for (const uint8_t* src = from; src != from + static_cast<ptrdiff_t>(turns) * 16; src += 16) {
        prefetch(src + prefetchDistance);
        prefetch(src + toLower + prefetchDistance);
        const __m128d upperNext = _mm_add_pd(upperX, two);
        const __m128d lowerNext = sharedX ? upperNext : _mm_add_pd(lowerX, two);
        upperSums.addFour(src, upperX, upperNext);
        lowerSums.addFour(src + toLower, sharedX ? upperX : lowerX, lowerNext);
        upperX = _mm_add_pd(upperNext, two);
        if (!sharedX) lowerX = _mm_add_pd(lowerNext, two);
    }
    upper.sums = upperSums;
    lower.sums = lowerSums;
    upper.src += static_cast<ptrdiff_t>(turns) * 16;
    lower.src += static_cast<ptrdiff_t>(turns) * 16;
}

void addRows(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t, double* moments)
{
    int32_t y = 0;
    for (; roiSize.height - y >= 2; y += 2, src += 2 * static_cast<ptrdiff_t>(srcStep)) {
        Row upper(src, roiSize.width);
        Row lower(src + srcStep, roiSize.width);
        const int32_t turns = upper.parts.turns < lower.parts.turns ? upper.parts.turns : lower.parts.turns;
        if (upper.parts.head == lower.parts.head)
            addTurns<true>(upper, lower, turns);
        else
            addTurns<false>(upper, lower, turns);
        addRow(moments, upper.finish(turns), y);
        addRow(moments, lower.finish(turns), y + 1);
    }
    if (y < roiSize.height) addRow(moments, Row(src, roiSize.width).finish(0), y);
}

}
}
