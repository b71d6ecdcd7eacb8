// Measures of a block in SSE2, a row of 16 samples in a register.
#include "lanes/samples_w7.h"

#include "video/half_pel_pairs_bytes.h"

namespace rux::w7 {
namespace {

using Samples = Samples16;
struct Registers {};

inline __m128i sumOfHalves(__m128i sums)
{
    return _mm_add_epi32(sums, _mm_unpackhi_epi64(sums, sums));
}

class AbsoluteSum {
public:
    void add(Samples p, Samples s) { sum = _mm_add_epi32(sum, _mm_sad_epu8(p.value, s.value)); }
    int32_t total() const { return _mm_cvtsi128_si32(sumOfHalves(sum)); }

private:
    __m128i sum = _mm_setzero_si128();
};

class SampleSum {
public:
    void add(Samples s) { differences.add(s, {_mm_setzero_si128()}); }
    int32_t total() const { return differences.total(); }

private:
    AbsoluteSum differences;
};

class SquareSum {
public:
    // |p - s|: one of the two differences saturates to 0.
    void add(Samples p, Samples s) { add(subtractSaturated(p, s) | subtractSaturated(s, p)); }
    void add(Samples a)
    {
        const Words16 words = widened(a);
        sum = _mm_add_epi32(sum, _mm_madd_epi16(words.low.value, words.low.value));
        sum = _mm_add_epi32(sum, _mm_madd_epi16(words.high.value, words.high.value));
    }
    int32_t total() const
    {
        const __m128i halves = sumOfHalves(sum);
        return _mm_cvtsi128_si32(_mm_add_epi32(halves, _mm_srli_epi64(halves, 32)));
    }

private:
    __m128i sum = _mm_setzero_si128();
};

}
}

#include "video/metrics_vector.h"

namespace rux::w7 {
namespace {

struct AlignedRow {
    static __m128i load(const uint8_t* from) { return Samples::loadAligned(from).value; }
};

struct RowAnywhere {
    static __m128i load(const uint8_t* from) { return Samples::load(from).value; }
};

// Two rows a turn, which wait for neither each other's sum nor each other's address.
template <typename SourceRow>
inline int32_t absoluteSum(Reference src, Reference reference)
{
    __m128i even = _mm_setzero_si128(), odd = even;
#pragma GCC unroll 4
    for (int32_t y = 0; y < blockSize; y += 2) {
        even = _mm_add_epi32(even, _mm_sad_epu8(RowAnywhere::load(reference.samples), SourceRow::load(src.samples)));
        odd = _mm_add_epi32(odd, _mm_sad_epu8(RowAnywhere::load(reference.samples + reference.stride),
                                              SourceRow::load(src.samples + src.stride)));
        src.samples += 2 * src.stride;
        reference.samples += 2 * reference.stride;
    }
    return _mm_cvtsi128_si32(sumOfHalves(_mm_add_epi32(even, odd)));
}

// What a motion search calls most. The block that it looks for stands on a boundary as a rule: its rows need no loads
// of their own.
inline ruxStatus absoluteDifferencesFullPel(Reference src, Reference reference, int32_t* result)
{
    const bool isAligned = ((reinterpret_cast<uintptr_t>(src.samples) | static_cast<uintptr_t>(src.stride)) & 15) == 0;
    store(result, isAligned ? absoluteSum<AlignedRow>(src, reference) : absoluteSum<RowAnywhere>(src, reference));
    return ruxStatusOk;
}

inline ruxStatus absoluteDifferences(int mode, Reference src, Reference reference, ptrdiff_t below, int32_t* result)
{
    if (mode == modeIndex(mcFullPel)) return absoluteDifferencesFullPel(src, reference, result);
    return kernels<AbsoluteSum>[mode](src, reference, below, result);
}

}
}
