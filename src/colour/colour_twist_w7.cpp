// The colour twist in SSE2 registers, 16 pixels at a time, each step rounded to float.
#include <emmintrin.h>

#include "colour/colour_twist.h"
#include "frame/rounding.h"
#include "lanes/partial_bytes.h"

namespace rux::w7 {
namespace {

constexpr size_t blockPixels = 16;
constexpr size_t blockBytes = blockPixels * 3;

// A block is 48 samples, x[0] to x[47]. Samples 12 apart belong to the same channel of pixels 4 apart, which are
// computed at once. The doublewords of a third are x[i], x[i + 12], x[i + 24], x[i + 36], each with the three samples
// behind it; i is 0, 4 and 8.
struct SampleThirds {
    __m128i at[3];
};

// Samples are converted where they stand in their doubleword, times 2^8 for each byte before them. The last one, which
// holds the sign, is moved to the first place.
constexpr int bytesShifted(int sample)
{
    return sample % 4 % 3;
}

inline __m128i loadWhole(const uint8_t* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline __m128i loadThird(const uint8_t* from)
{
    const __m128 low = _mm_castsi128_ps(loadWhole(from));
    const __m128 high = _mm_castsi128_ps(loadWhole(from + 24));
    return _mm_castps_si128(_mm_shuffle_ps(low, high, _MM_SHUFFLE(3, 0, 3, 0)));
}

inline SampleThirds loadBlock(const uint8_t* from)
{
    return {{loadThird(from), loadThird(from + 4), loadThird(from + 8)}};
}

// A sample and those 12, 24 and 36 behind it, as they are shifted.
template <int sample>
inline __m128 sampleOf(const SampleThirds& block)
{
    const __m128i third = block.at[sample / 4];
    if (sample % 4 == 3) return _mm_cvtepi32_ps(_mm_srli_epi32(third, 24));
    return _mm_cvtepi32_ps(_mm_and_si128(third, _mm_set1_epi32(0xFF << 8 * bytesShifted(sample))));
}

// Words of four neighbouring samples, of the pixels from 0 and 4 on (first) and from 8 and 12 on (second).
struct SampleQuads {
    __m128i first, second;
};

// The words of four vectors, transposed.
inline SampleQuads transposed(const __m128i* vectors)
{
    const __m128i even = _mm_packs_epi32(vectors[0], vectors[2]);
    const __m128i odd = _mm_packs_epi32(vectors[1], vectors[3]);
    const __m128i low = _mm_unpacklo_epi16(even, odd);
    const __m128i high = _mm_unpackhi_epi16(even, odd);
    return {_mm_unpacklo_epi32(low, high), _mm_unpackhi_epi32(low, high)};
}

inline void storeWhole(uint8_t* to, __m128i value)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value);
}

// The low half of one register, the high half of another.
inline __m128i halves(__m128i low, __m128i high)
{
    return _mm_castpd_si128(_mm_move_sd(_mm_castsi128_pd(high), _mm_castsi128_pd(low)));
}

// Each coefficient in all lanes: four pixels meet a row of the matrix at once. The factors are divided by what the
// shift of a sample multiplies it with; powers of two change no rounding, so that the products are the same. A factor
// so small that it loses bits thereby adds nothing to what is rounded to an integer.
struct TwistVectors {
    __m128 factors[3][3][3];   // by row, channel and shift in bytes
    __m128 offsets[3];
};

// Rounding is monotonic and leaves 0 and 255 alone, so that the clamp may come behind it: as the saturation of words
// that fit an integer. Values beyond, which the conversion would turn negative, are clamped before; a NaN becomes 0.
template <bool fitsInteger>
inline __m128i nearestIntegers(__m128 values)
{
    if (!fitsInteger) values = _mm_min_ps(_mm_max_ps(values, _mm_setzero_ps()), _mm_set1_ps(255.0f));
    return _mm_cvtps_epi32(values);
}

template <bool fitsInteger, int sample>
inline __m128i twistedChannel(const TwistVectors& matrix, int row, const __m128* channels)
{
    const auto& factors = matrix.factors[row];
    const __m128 product0 = _mm_mul_ps(factors[0][bytesShifted(sample)], channels[0]);
    const __m128 product1 = _mm_mul_ps(factors[1][bytesShifted(sample + 1)], channels[1]);
    const __m128 product2 = _mm_mul_ps(factors[2][bytesShifted(sample + 2)], channels[2]);
    const __m128 first = _mm_add_ps(matrix.offsets[row], product0);
    return nearestIntegers<fitsInteger>(_mm_add_ps(first, _mm_add_ps(product2, product1)));
}

// Four pixels, by their first sample.
template <bool fitsInteger, int sample>
inline void twistFour(const TwistVectors& matrix, const SampleThirds& block, __m128i* results)
{
    const __m128 channels[3] = {sampleOf<sample>(block), sampleOf<sample + 1>(block), sampleOf<sample + 2>(block)};
    results[sample] = twistedChannel<fitsInteger, sample>(matrix, 0, channels);
    results[sample + 1] = twistedChannel<fitsInteger, sample>(matrix, 1, channels);
    results[sample + 2] = twistedChannel<fitsInteger, sample>(matrix, 2, channels);
}

template <bool fitsInteger>
[[gnu::always_inline]] inline void twistBlock(const TwistVectors& matrix, const uint8_t* src, uint8_t* dst)
{
    const SampleThirds block = loadBlock(src);
    __m128i results[12];
    twistFour<fitsInteger, 0>(matrix, block, results);
    twistFour<fitsInteger, 3>(matrix, block, results);
    const SampleQuads a = transposed(results);
    twistFour<fitsInteger, 6>(matrix, block, results);
    const SampleQuads b = transposed(results + 4);
    twistFour<fitsInteger, 9>(matrix, block, results);
    const SampleQuads c = transposed(results + 8);
    const __m128i middle = _mm_unpackhi_epi64(b.first, c.first);
    storeWhole(dst, _mm_packus_epi16(_mm_unpacklo_epi64(a.first, b.first), halves(c.first, a.first)));
    storeWhole(dst + 16, _mm_packus_epi16(middle, _mm_unpacklo_epi64(a.second, b.second)));
    storeWhole(dst + 32, _mm_packus_epi16(halves(c.second, a.second), _mm_unpackhi_epi64(b.second, c.second)));
}

// Fewer bytes than a block, which is 48.
inline void copyPartOfBlock(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (; bytes >= 16; src += 16, dst += 16, bytes -= 16) storeWhole(dst, loadWhole(src));
    copyFewBytes(src, dst, bytes);
}

// Not inlined: compilers move arithmetic over a change of the control register.
template <bool fitsInteger>
[[gnu::noinline]] void twistRow(const uint8_t* src, uint8_t* dst, size_t width, const TwistVectors& matrix)
{
    for (; width >= blockPixels; width -= blockPixels, src += blockBytes, dst += blockBytes)
        twistBlock<fitsInteger>(matrix, src, dst);
    if (width == 0) return;

    uint8_t block[blockBytes] = {};
    copyPartOfBlock(src, block, width * 3);
    twistBlock<fitsInteger>(matrix, block, block);
    copyPartOfBlock(block, dst, width * 3);
}

inline float magnitude(float value)
{
    return value < 0 ? -value : value;
}

// Whether no pixel's sum comes near the bounds of an integer; no matrix with a NaN does.
inline bool sumsFitInteger(const TwistMatrix& matrix)
{
    bool fits = true;
    for (const float (&row)[4] : matrix.of) {
        const float factors = magnitude(row[0]) + magnitude(row[1]) + magnitude(row[2]);
        fits = fits && factors * 255.0f + magnitude(row[3]) < 0x1p30f;
    }
    return fits;
}

void twistImage(const TwistImages& images, const TwistMatrix& matrix)
{
    TwistVectors vectors;
    for (int i = 0; i < 3; ++i) {
        for (int channel = 0; channel < 3; ++channel) {
            const __m128 factor = _mm_set1_ps(matrix.of[i][channel]);
            vectors.factors[i][channel][0] = factor;
            vectors.factors[i][channel][1] = _mm_mul_ps(factor, _mm_set1_ps(0x1p-8f));
            vectors.factors[i][channel][2] = _mm_mul_ps(factor, _mm_set1_ps(0x1p-16f));
        }
        vectors.offsets[i] = _mm_set1_ps(matrix.of[i][3]);
    }
    const auto row = sumsFitInteger(matrix) ? twistRow<true> : twistRow<false>;
    const VectorRounding rounding(Rounding::nearest);
    images.forEachRow([&](const uint8_t* src, uint8_t* dst, size_t width) { row(src, dst, width, vectors); });
}

}
}
