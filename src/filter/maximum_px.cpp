// Maximum filter, pixel by pixel: a circular window of the mask's width, which every pixel looks through.
#include "filter/maximum.h"

namespace rux::px {
namespace {

void copyImage(const MaximumImages& images)
{
    for (int32_t y = 0; y < images.height; ++y) {
        const uint8_t* const src = images.src + y * images.srcStride;
        uint8_t* const dst = images.dst + y * images.dstStride;
        for (size_t x = 0; x < images.width; ++x) dst[x] = src[x];
    }
}

void slideMaximum(const uint8_t* src, uint8_t* to, size_t width, int32_t* window, size_t maskWidth)
{
    for (size_t i = 0; i < maskWidth - 1; ++i) window[i] = src[i];
    size_t newest = maskWidth - 1;
    for (size_t x = 0; x < width; ++x) {
        window[newest] = src[x + maskWidth - 1];
        newest = newest + 1 < maskWidth ? newest + 1 : 0;
        int32_t largest = window[0];
        for (size_t i = 1; i < maskWidth; ++i)
            if (window[i] > largest) largest = window[i];
        to[x] = static_cast<uint8_t>(largest);
    }
}

// When the window cannot be had, the ring is not returned.
ruxStatus filterMaximum(const MaximumImages& images, size_t maskWidth, int32_t maskHeight)
{
    const ptrdiff_t ringStride = static_cast<ptrdiff_t>(roundedUpTo32(static_cast<int64_t>(images.width)));
    WorkMemory<uint8_t> ring(static_cast<int64_t>(ringStride) * maskHeight);
    if (!ring) return ruxStatusMemoryAllocated;
    const WorkMemory<int32_t> window(static_cast<int64_t>(maskWidth));
    if (!window) {
        ring.leak();
        return ruxStatusMemoryAllocated;
    }

    const uint8_t* src = images.src;
    for (int32_t row = 0; row < maskHeight - 1; ++row, src += images.srcStride)
        slideMaximum(src, ring + row * ringStride, images.width, window, maskWidth);

    int32_t newest = maskHeight - 1;
    for (int32_t y = 0; y < images.height; ++y, src += images.srcStride) {
        slideMaximum(src, ring + newest * ringStride, images.width, window, maskWidth);
        newest = newest + 1 < maskHeight ? newest + 1 : 0;

        uint8_t* const dst = images.dst + y * images.dstStride;
        for (size_t x = 0; x < images.width; ++x) dst[x] = ring[static_cast<ptrdiff_t>(x)];
        for (int32_t row = 1; row < maskHeight; ++row) {
            const uint8_t* const maxima = ring + row * ringStride;
            for (size_t x = 0; x < images.width; ++x)
                if (maxima[x] > dst[x]) dst[x] = maxima[x];
        }
    }
    return ruxStatusOk;
}

}
}
