// Moments: in double with the accurate hint, otherwise within a row in four lanes of float.
#include "geometry/moments_scalar.h"
#include "lanes/four_floats.h"

namespace rux::a6 {
namespace {

struct LaneSums {
    __m128 s0 = _mm_setzero_ps();
    __m128 s1 = _mm_setzero_ps();
    __m128 s2 = _mm_setzero_ps();
    __m128 s3 = _mm_setzero_ps();

    void addFour(__m128 term, __m128 x)
    {
        s0 = _mm_add_ps(s0, term);
        term = _mm_mul_ps(term, x);
        s1 = _mm_add_ps(s1, term);
        term = _mm_mul_ps(term, x);
        s2 = _mm_add_ps(s2, term);
        term = _mm_mul_ps(term, x);
        s3 = _mm_add_ps(s3, term);
    }

    void addOne(__m128 term, __m128 x)
    {
        s0 = _mm_add_ss(s0, term);
        term = _mm_mul_ss(term, x);
        s1 = _mm_add_ss(s1, term);
        term = _mm_mul_ss(term, x);
        s2 = _mm_add_ss(s2, term);
        term = _mm_mul_ss(term, x);
        s3 = _mm_add_ss(s3, term);
    }
};

// (lane 1 + lane 3) + (lane 0 + lane 2)
inline double foldedLanes(__m128 sums)
{
    const __m128 pairs = _mm_add_ps(sums, _mm_movehl_ps(sums, sums));
    return _mm_cvtss_f32(_mm_add_ss(_mm_shuffle_ps(pairs, pairs, 1), pairs));
}

inline RowSums sumRowFast(const uint8_t* src, int32_t width)
{
    static constexpr float steps[3][4] = {{1, 1, 1, 1}, {0, 1, 2, 3}, {4, 4, 4, 4}};
    const __m128 one = _mm_loadu_ps(steps[0]);
    LaneSums sums;
    __m128 x = _mm_setzero_ps();
    const auto addSingly = [&](int32_t pixels) {
        for (; pixels > 0; --pixels, --width, src += 4, x = _mm_add_ss(x, one))
            sums.addOne(FourFloats::loadOne(src).value, x);
    };

    const int32_t head = static_cast<int32_t>(bytesToBoundary(src, 16) / 4);
    addSingly(isAligned(src, 4) && head < width ? head : width);
    x = _mm_add_ps(_mm_shuffle_ps(x, x, 0), _mm_loadu_ps(steps[1]));
    for (; width >= 4; width -= 4, src += 16, x = _mm_add_ps(x, _mm_loadu_ps(steps[2])))
        sums.addFour(FourFloats::loadAligned(src).value, x);
    addSingly(width);
    return {foldedLanes(sums.s0), foldedLanes(sums.s1), foldedLanes(sums.s2), foldedLanes(sums.s3)};
}

// Not inlined: nothing is computed before the caller has set the stack's precision.
[[gnu::noinline]] void addRowsFast(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, double* moments)
{
    for (int32_t y = 0; y < roiSize.height; ++y, src += srcStep) addRow(moments, sumRowFast(src, roiSize.width), y);
}

void addRows(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t hint, double* moments)
{
    if (hint == momentHintAccurate)
        addRowsInOrder(src, srcStep, roiSize, moments);
    else
        addRowsFast(src, srcStep, roiSize, moments);
}

}
}
