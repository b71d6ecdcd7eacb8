// Norms of differences 16 bytes at a time.
#include "lanes/sixteen_byte_elements.h"

#include "arith/norm_diff_floats.h"
#include "arith/norm_diff_integers.h"

namespace rux::w7 {
namespace {

template <typename Element, Layout layout>
void sumIntegers(const ImagePair& images, double* norm)
{
    uint64_t totals[4] = {};
    sumImages<SixteenBytes, Element, layout>(images, totals);
    storeNorms<layout>(totals, norm);
}

int32_t sumMaskedBytes(const ImagePair& images, Mask mask)
{
    return static_cast<int32_t>(sumMaskedImages<SixteenBytes>(images, mask));
}

// |a - b| of floats that are converted to double first.
inline __m128d doubleDifference(__m128 a, __m128 b)
{
    return _mm_andnot_pd(_mm_set1_pd(-0.0), _mm_sub_pd(_mm_cvtps_pd(a), _mm_cvtps_pd(b)));
}

// Two floats, and zeros above them.
inline __m128 loadTwo(const uint8_t* from)
{
    return _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)));
}

inline __m128d twoDifferences(const uint8_t* a, const uint8_t* b)
{
    return doubleDifference(loadTwo(a), loadTwo(b));
}

inline __m128d oneDifference(const uint8_t* a, const uint8_t* b)
{
    return doubleDifference(FourFloats::loadOne(a).value, FourFloats::loadOne(b).value);
}

// The sum of the even columns stands in the lower half, that of the odd ones in the upper. A last single column adds
// 0.0 to the odd sum, which is never -0.0 and so stays.
inline void sumColumnsInDouble(const ImagePair& images, double* norm)
{
    __m128d sums = _mm_setzero_pd();
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        int32_t pairs = images.roiSize.width / 2;
        for (; pairs > 0; --pairs, a += 8, b += 8) sums = _mm_add_pd(sums, twoDifferences(a, b));
        if (images.roiSize.width % 2 != 0) sums = _mm_add_pd(sums, oneDifference(a, b));
    });
    store<double>(norm, _mm_cvtsd_f64(_mm_add_sd(_mm_unpackhi_pd(sums, sums), sums)));
}

// Channels 0 and 1 stand in the first pair, 2 and 3 in the second, where AC4 and C3 leave out the upper half.
template <Layout layout>
inline void sumChannelsInDouble(const ImagePair& images, double* norm)
{
    constexpr int pixelSize = channelsOf(layout) * 4;
    __m128d first = _mm_setzero_pd();
    __m128d second = _mm_setzero_pd();
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        for (int32_t x = 0; x < images.roiSize.width; ++x, a += pixelSize, b += pixelSize) {
            first = _mm_add_pd(first, twoDifferences(a, b));
            second = _mm_add_pd(second, layout == Layout::C4 ? twoDifferences(a + 8, b + 8)
                                                             : oneDifference(a + 8, b + 8));
        }
    });
    _mm_storeu_pd(norm, first);
    if (layout == Layout::C4)
        _mm_storeu_pd(norm + 2, second);
    else
        store<double>(norm + 2, _mm_cvtsd_f64(second));
}

template <Layout layout>
void sumFloats(const ImagePair& images, double* norm, int32_t hint)
{
    if (hint != hintAccurate)
        sumFloatsFast<layout>(images, norm);
    else if (layout == Layout::C1)
        sumColumnsInDouble(images, norm);
    else
        sumChannelsInDouble<layout>(images, norm);
}

inline EightMasks masksOf(const uint8_t* bytes)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i words = _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes)), zero);
    return {{_mm_castsi128_ps(_mm_cmpgt_epi32(_mm_unpacklo_epi16(words, zero), zero))},
            {_mm_castsi128_ps(_mm_cmpgt_epi32(_mm_unpackhi_epi16(words, zero), zero))}};
}

void sumMaskedFloats(const ImagePair& images, Mask mask, double* norm)
{
    float total;
    sumMaskedImages(images, mask, &total);
    store<double>(norm, total);
}

}
}
