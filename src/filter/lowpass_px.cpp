// Lowpass filter, pixel by pixel: horizontal sums of each source row, of which the newest replaces the oldest.
#include "filter/lowpass.h"

namespace rux::px {
namespace {

template <int size>
inline uint8_t meanOf(int32_t sum)
{
    return static_cast<uint8_t>(size == 3 ? ((sum + 5) * 455) >> 12 : ((sum + 13) * 10485) >> 18);
}

template <int size>
inline void sumHorizontally(const uint8_t* src, int32_t* sums, ptrdiff_t width)
{
    int32_t sum = 0;
    for (int i = 0; i < size; ++i) sum += src[i];
    sums[0] = sum;
    for (ptrdiff_t x = 1; x < width; ++x) {
        sum += src[x + size - 1] - src[x - 1];
        sums[x] = sum;
    }
}

// The rows of sums follow each other in a ring; behind them stand the sums of whole masks.
template <int size>
ruxStatus filterMean(const MaskedImages& images)
{
    const ptrdiff_t width = images.width;
    const WorkMemory<int32_t> work(static_cast<int64_t>(size + 1) * width);
    if (!work) return ruxStatusMemoryAllocated;
    int32_t* const maskSums = work + size * width;

    for (ptrdiff_t x = 0; x < width; ++x) maskSums[x] = 0;
    for (int row = 0; row < size; ++row) {
        int32_t* const sums = work + row * width;
        sumHorizontally<size>(images.src + row * images.srcStride, sums, width);
        for (ptrdiff_t x = 0; x < width; ++x) maskSums[x] += sums[x];
    }

    int oldest = 0;
    for (int32_t y = 0;; ++y) {
        uint8_t* const dst = images.dst + y * images.dstStride;
        for (ptrdiff_t x = 0; x < width; ++x) dst[x] = meanOf<size>(maskSums[x]);
        if (y == images.height - 1) return ruxStatusOk;

        int32_t* const sums = work + oldest * width;
        for (ptrdiff_t x = 0; x < width; ++x) maskSums[x] -= sums[x];
        const uint8_t* const leaving = images.src + y * images.srcStride;
        sumHorizontally<size>(leaving + size * images.srcStride, sums, width);
        for (ptrdiff_t x = 0; x < width; ++x) maskSums[x] += sums[x];
        oldest = oldest + 1 < size ? oldest + 1 : 0;
    }
}

}
}
