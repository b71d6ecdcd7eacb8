// Counts 16 bytes at a time.
#include "lanes/sixteen_byte_elements.h"

#include "arith/count_in_range_bytes.h"
#include "arith/count_in_range_floats.h"

namespace rux::w7 {
namespace {

// A row's count is kept in eight 16-bit numbers, which hold the counts of rows under 524288 pixels.
int32_t countBytes(const CountedImage& image, uint8_t lowerBound, uint8_t upperBound)
{
    const ByteRange<SixteenBytes> range(lowerBound, upperBound);
    uint32_t count = 0;
    image.forEachRow([&](const uint8_t* row) {
        count += countRow(
            range, row, static_cast<size_t>(image.roiSize.width),
            [](SixteenBytes sums, SixteenBytes counts) {
                return add16(sums, add16(widenLow8(counts), widenHigh8(counts)));
            },
            [](SixteenBytes sums) { return total32(add32(widenLow16(sums), widenHigh16(sums))); });
    });
    return static_cast<int32_t>(count);
}

// A mask of -1 is taken from each of four counts.
uint32_t countVectors(const FloatRange& range, const uint8_t* row, size_t vectors)
{
    __m128i even = _mm_setzero_si128();
    __m128i odd = even;
    for (; vectors >= 2; vectors -= 2, row += 32) {
        even = _mm_sub_epi32(even, _mm_castps_si128(range.holds(FourFloats::load(row)).value));
        odd = _mm_sub_epi32(odd, _mm_castps_si128(range.holds(FourFloats::load(row + 16)).value));
    }
    if (vectors > 0) even = _mm_sub_epi32(even, _mm_castps_si128(range.holds(FourFloats::load(row)).value));
    return static_cast<uint32_t>(total32(add32({even}, {odd})));
}

}
}
