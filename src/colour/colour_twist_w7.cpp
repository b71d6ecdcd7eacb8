// The colour twist in SSE2 registers, 16 pixels at a time, each step rounded to float.
#include <emmintrin.h>

#include "colour/colour_twist.h"
#include "frame/rounding.h"
#include "lanes/partial_bytes.h"

namespace rux::w7 {
namespace {

constexpr size_t blockPixels = 16;
constexpr size_t blockBytes = blockPixels * 3;

// A block is 48 samples, x[0] to x[47], and samples 12 apart belong to the same channel of pixels 4 apart. Vector i of
// 12 holds x[i], x[i + 24], x[i + 12], x[i + 36]: sample i of four pixels, in the order of two interleavings.
struct SampleVectors {
    __m128 at[12];
};

inline __m128i loadWhole(const uint8_t* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline __m128i loadEight(const uint8_t* from)
{
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
}

inline void widenSamples(__m128i bytes, __m128* to)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = _mm_unpacklo_epi8(bytes, zero);
    const __m128i high = _mm_unpackhi_epi8(bytes, zero);
    to[0] = _mm_cvtepi32_ps(_mm_unpacklo_epi16(low, zero));
    to[1] = _mm_cvtepi32_ps(_mm_unpackhi_epi16(low, zero));
    to[2] = _mm_cvtepi32_ps(_mm_unpacklo_epi16(high, zero));
    to[3] = _mm_cvtepi32_ps(_mm_unpackhi_epi16(high, zero));
}

// The bytes of two registers side by side. The compiler is kept from composing two interleavings in a way of its own.
inline __m128i interleaved(__m128i a, __m128i b)
{
    __m128i pairs = _mm_unpacklo_epi8(a, b);
    asm("" : "+x"(pairs));
    return pairs;
}

inline SampleVectors loadBlock(const uint8_t* from)
{
    const __m128i pairs0 = interleaved(loadEight(from), loadEight(from + 24));   // x[i], x[i + 24]
    const __m128i pairs8 = interleaved(loadEight(from + 8), loadEight(from + 32));
    const __m128i pairs16 = interleaved(loadEight(from + 16), loadEight(from + 40));
    SampleVectors samples;
    widenSamples(_mm_unpacklo_epi16(pairs0, _mm_srli_si128(pairs8, 8)), samples.at);
    widenSamples(_mm_unpacklo_epi16(_mm_srli_si128(pairs0, 8), pairs16), samples.at + 4);
    widenSamples(_mm_unpacklo_epi16(pairs8, _mm_srli_si128(pairs16, 8)), samples.at + 8);
    return samples;
}

// Words of four neighbouring samples, of the pixels from 0 and 8 on (first) and from 4 and 12 on (second).
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

// The opposite of loadBlock: integers clamped to bytes, and laid out in memory.
inline void storeBlock(const __m128i* vectors, uint8_t* to)
{
    const SampleQuads a = transposed(vectors);
    const SampleQuads b = transposed(vectors + 4);
    const SampleQuads c = transposed(vectors + 8);
    const __m128i ab = _mm_unpackhi_epi64(a.first, b.first);
    const __m128i bc = _mm_unpackhi_epi64(b.second, c.second);
    storeWhole(to, _mm_packus_epi16(_mm_unpacklo_epi64(a.first, b.first), _mm_unpacklo_epi64(c.first, a.second)));
    storeWhole(to + 16, _mm_packus_epi16(_mm_unpacklo_epi64(b.second, c.second), ab));
    storeWhole(to + 32, _mm_packus_epi16(_mm_unpackhi_epi64(c.first, a.second), bc));
}

// Each coefficient in all lanes: four pixels meet a row of the matrix at once.
struct TwistVectors {
    __m128 of[3][4];
};

// Rounding is monotonic and leaves 0 and 255 alone, so that the clamp may come behind it: as the saturation of words
// that fit an integer. Values beyond, which the conversion would turn negative, are clamped before; a NaN becomes 0.
template <bool fitsInteger>
inline __m128i nearestIntegers(__m128 values)
{
    if (!fitsInteger) values = _mm_min_ps(_mm_max_ps(values, _mm_setzero_ps()), _mm_set1_ps(255.0f));
    return _mm_cvtps_epi32(values);
}

template <bool fitsInteger>
inline __m128i twistedChannel(const __m128* row, const __m128* channels)
{
    const __m128 first = _mm_add_ps(row[3], _mm_mul_ps(row[0], channels[0]));
    const __m128 others = _mm_add_ps(_mm_mul_ps(row[2], channels[2]), _mm_mul_ps(row[1], channels[1]));
    return nearestIntegers<fitsInteger>(_mm_add_ps(first, others));
}

template <bool fitsInteger>
inline void twistFour(const TwistVectors& matrix, const __m128* channels, __m128i* results)
{
    results[0] = twistedChannel<fitsInteger>(matrix.of[0], channels);
    results[1] = twistedChannel<fitsInteger>(matrix.of[1], channels);
    results[2] = twistedChannel<fitsInteger>(matrix.of[2], channels);
}

template <bool fitsInteger>
[[gnu::always_inline]] inline void twistBlock(const TwistVectors& matrix, const uint8_t* src, uint8_t* dst)
{
    const SampleVectors samples = loadBlock(src);
    __m128i results[12];
    twistFour<fitsInteger>(matrix, samples.at, results);
    twistFour<fitsInteger>(matrix, samples.at + 3, results + 3);
    twistFour<fitsInteger>(matrix, samples.at + 6, results + 6);
    twistFour<fitsInteger>(matrix, samples.at + 9, results + 9);
    storeBlock(results, dst);
}

// Fewer bytes than a block, which is 48.
inline void copyPartOfBlock(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (; bytes >= 16; src += 16, dst += 16, bytes -= 16) storeWhole(dst, loadWhole(src));
    copyFewBytes(src, dst, bytes);
}

// Not inlined: compilers move arithmetic over a change of the control register.
template <bool fitsInteger>
[[gnu::noinline]] void twistRow(const uint8_t* src, uint8_t* dst, size_t width, const TwistVectors& vectors)
{
    const TwistVectors matrix = vectors;   // of its own: bytes of dst could be any object's
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
    for (int i = 0; i < 12; ++i) vectors.of[i / 4][i % 4] = _mm_set1_ps(matrix.of[i / 4][i % 4]);
    const auto row = sumsFitInteger(matrix) ? twistRow<true> : twistRow<false>;
    const VectorRounding rounding(Rounding::nearest);
    images.forEachRow([&](const uint8_t* src, uint8_t* dst, size_t width) { row(src, dst, width, vectors); });
}

}
}
