#include "model/box.h"

#include <cmath>
#include <vector>

#include "model/wrapping.h"

namespace rux::model {
namespace {

ruxStatus checked(bool null, bool wrongStep, ruxiSize roi, ruxiSize mask, ruxiPoint anchor)
{
    if (null) return ruxStatusNullPointer;
    if (wrongStep) return ruxStatusStepError;
    if (roi.width < 1 || roi.height < 1) return ruxStatusSizeError;
    if (mask.width < 2 || mask.height < 2) return ruxStatusMaskSize;
    if (anchor.x < 0 || anchor.y < 0 || anchor.x >= mask.width || anchor.y >= mask.height) return ruxStatusAnchor;
    return ruxStatusOk;
}

bool hasBlocks(Level level)
{
    return level == a6 || level == w7;
}

uint8_t scaled(Wrapping sum, const BoxReciprocal& reciprocal)
{
    return static_cast<uint8_t>((sum * reciprocal.multiplier >> (reciprocal.shift & 31)).value());
}

// 3x3 without column sums: whole blocks of 8 and the rest of a row have a formula each.
uint8_t nineMean(Level level, int sum, int x, int width)
{
    const bool inBlock = hasBlocks(level) && x < width / 8 * 8;
    return static_cast<uint8_t>(inBlock ? ((sum * 29127 >> 16) + 2) >> 2 : sum * 455 >> 12);
}

// The image from the first pixel that any window reads; windows are numbered by the row in which they begin.
class Windows {
public:
    Windows(Level level, const uint8_t* origin, int32_t step, int32_t width, ruxiSize mask)
        : level(level), origin(origin), step(step), width(width), mask(mask),
          reciprocal(boxReciprocal(level, mask.width * mask.height))
    {
        for (int32_t i = 0; i < width + mask.width - 1; i++) {
            Wrapping sum;
            for (int32_t j = 0; j < mask.height; j++) sum = sum + pixel(i, j);
            columns.push_back(sum);
        }
    }

    // A row from the column sums as they stand.
    void filter(uint8_t* to) const
    {
        for (int32_t x = 0; x < width; x++) {
            Wrapping sum;
            for (int32_t i = 0; i < mask.width; i++) sum = sum + columns[static_cast<size_t>(x + i)];
            to[x] = scaled(sum, reciprocal);
        }
    }

    // From the windows that begin in row y to those of the next row.
    void update(int32_t y)
    {
        for (int32_t i = 0; i < width + mask.width - 1; i++) {
            Wrapping& column = columns[static_cast<size_t>(i)];
            column = column + pixel(i, y + mask.height) - pixel(i, y);
        }
    }

    void filterNine(int32_t y, uint8_t* to) const
    {
        for (int32_t x = 0; x < width; x++) {
            int sum = 0;
            for (int cell = 0; cell < 9; cell++) sum += pixel(x + cell % 3, y + cell / 3);
            to[x] = nineMean(level, sum, x, width);
        }
    }

private:
    uint8_t pixel(int32_t x, int32_t y) const { return *at(origin, step, x, y); }

    Level level;
    const uint8_t* origin;
    int32_t step, width;
    ruxiSize mask;
    BoxReciprocal reciprocal;
    std::vector<Wrapping> columns;
};

bool isNine(ruxiSize mask)
{
    return mask.width == 3 && mask.height == 3;
}

}

BoxReciprocal boxReciprocal(Level level, int32_t area)
{
    const auto inverse = static_cast<float>(1.0 / area);
    const double scaled = static_cast<double>(inverse) * 4294967296.0;
    const double whole = level == px ? std::trunc(scaled + 0.000009) : std::nearbyint(scaled - 0.49999);
    auto bits = static_cast<uint32_t>(whole);
    int shifts = 0;
    for (; shifts < 24 && bits < 0x80000000u; shifts++) bits <<= 1;
    if (level == w7) return {static_cast<int32_t>(bits >> 20), shifts + 12};
    return {static_cast<int32_t>((uint64_t(bits) + 0x800000) >> 24), shifts + 8};
}

ruxStatus ruxiFilterBox_8u_C1R(Level level, const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                               ruxiSize roiSize, ruxiSize maskSize, ruxiPoint anchor)
{
    const ruxStatus status = checked(!src || !dst, srcStep < 1 || dstStep < 1, roiSize, maskSize, anchor);
    if (status != ruxStatusOk) return status;
    const bool nine = isNine(maskSize) && hasBlocks(level);
    Windows windows(level, at(src, srcStep, -anchor.x, -anchor.y), srcStep, roiSize.width, maskSize);
    for (int32_t y = 0; y < roiSize.height; y++) {
        uint8_t* const row = at(dst, dstStep, 0, y);
        if (nine) {
            windows.filterNine(y, row);
        } else {
            windows.filter(row);
            if (y < roiSize.height - 1) windows.update(y);
        }
    }
    return ruxStatusOk;
}

ruxStatus ruxiFilterBox_8u_C1IR(Level level, uint8_t* srcDst, int32_t srcDstStep, ruxiSize roiSize, ruxiSize maskSize,
                                ruxiPoint anchor)
{
    const ruxStatus status = checked(!srcDst, srcDstStep < 1, roiSize, maskSize, anchor);
    if (status != ruxStatusOk) return status;
    const bool nine = isNine(maskSize);
    const int32_t rows = anchor.y + 1, height = roiSize.height;
    const auto width = static_cast<size_t>(roiSize.width);
    std::vector<std::vector<uint8_t>> ring(static_cast<size_t>(rows), std::vector<uint8_t>(width));
    Windows windows(level, at(srcDst, srcDstStep, -anchor.x, -anchor.y), srcDstStep, roiSize.width, maskSize);

    const int32_t filtered = std::max(2 * anchor.y + 1, height);
    const auto filter = [&](int32_t y, bool update) {
        uint8_t* const row = ring[static_cast<size_t>(y % rows)].data();
        if (nine) return windows.filterNine(y, row);
        windows.filter(row);
        if (update && y < filtered - 1) windows.update(y);   // what the last update would read, no window needs
    };
    const auto land = [&](int32_t y) {
        std::memcpy(at(srcDst, srcDstStep, 0, y - anchor.y), ring[static_cast<size_t>((y + 1) % rows)].data(), width);
    };
    const bool early = rows != height - 1;
    int32_t y = 0;
    for (; y < anchor.y; y++) filter(y, early);
    for (; y <= 2 * anchor.y; y++) filter(y, early), land(y);
    for (; y < height; y++) filter(y, y != height - 1), land(y);
    for (; y < anchor.y + height; y++) land(y);
    return ruxStatusOk;
}

}
