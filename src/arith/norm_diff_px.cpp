// Norms of differences, element by element: a row is added in 32-bit integers, the rows in double.
#include "arith/norm_diff_scalar.h"

namespace rux::px {
namespace {

template <typename Element>
inline int32_t difference(const uint8_t* a, const uint8_t* b)
{
    const int32_t d = load<Element>(a) - load<Element>(b);
    return d < 0 ? -d : d;
}

// One channel has a sum for the even and one for the odd columns.
template <typename Element>
int32_t sumRow(const uint8_t* a, const uint8_t* b, int32_t width)
{
    constexpr int size = sizeof(Element);
    int32_t even = 0;
    int32_t odd = 0;
    for (int32_t pairs = width / 2; pairs > 0; --pairs, a += 2 * size, b += 2 * size) {
        even += difference<Element>(a, b);
        odd += difference<Element>(a + size, b + size);
    }
    if (width % 2 != 0) even += difference<Element>(a, b);
    return even + odd;
}

template <typename Element, Layout layout>
void sumChannels(const ImagePair& images, double* totals)
{
    constexpr int size = sizeof(Element);
    constexpr int pixelSize = channelsOf(layout) * size;
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        int32_t row[4] = {};
        for (int32_t x = 0; x < images.roiSize.width; ++x, a += pixelSize, b += pixelSize)
            for (int c = 0; c < summedChannelsOf(layout); ++c)
                row[c] += difference<Element>(a + c * size, b + c * size);
        for (int c = 0; c < summedChannelsOf(layout); ++c) totals[c] += row[c];
    });
}

template <typename Element, Layout layout>
void sumIntegers(const ImagePair& images, double* norm)
{
    double totals[4] = {};
    if (layout == Layout::C1)
        images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
            totals[0] += sumRow<Element>(a, b, images.roiSize.width);
        });
    else
        sumChannels<Element, layout>(images, totals);
    for (int c = 0; c < summedChannelsOf(layout); ++c) store<double>(norm + c, totals[c]);
}

int32_t sumMaskedBytes(const ImagePair& images, Mask mask)
{
    int32_t total = 0;
    const uint8_t* maskRow = mask.mask;
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        for (int32_t x = 0; x < images.roiSize.width; ++x)
            if (maskRow[x]) total += difference<uint8_t>(a + x, b + x);
        maskRow += mask.maskStep;
    });
    return total;
}

}
}
