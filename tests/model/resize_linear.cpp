// Two taps an axis, weights in units of 1/16384, rows kept in units of 1/64.
#include "model/resize_kernels.h"

namespace rux::model {
namespace {

struct Tap {
    int32_t index;     // of the first of the two samples
    int32_t fraction;  // weight of the second
};

// On the image's last sample, not the rectangle's, the pair moves one back and all weight lies on the second.
std::vector<Tap> tapsOf(const Axis& axis)
{
    std::vector<Tap> taps;
    const int32_t last = axis.srcLength - 1 - axis.srcBegin;
    for (const double position : positionsOf(axis)) {
        const int32_t index = indexOf(position);
        if (index == last) {
            taps.push_back({index - 1, 16384});
        } else {
            const int32_t fraction = truncated(resizeEpsilon + (position - index) * 16384.0);
            taps.push_back({index, fraction & 0xFFFF});
        }
    }
    return taps;
}

std::vector<uint16_t> scaledRow(const uint8_t* row, const std::vector<Tap>& taps, uint32_t bias)
{
    std::vector<uint16_t> scaled;
    for (const auto& [index, fraction] : taps) {
        const int32_t sum = (16384 - fraction) * row[index] + fraction * row[index + 1];
        scaled.push_back(static_cast<uint16_t>((static_cast<uint32_t>(sum) + bias) >> 8));
    }
    return scaled;
}

}

void resizeLinear(const Scaling& s, const Axis& x, const Axis& y)
{
    const bool rounds = s.level == px;
    const uint32_t biasAlong = rounds ? 128 : 0;
    const uint32_t biasDown = rounds ? 0x80000 : 0;
    const auto columns = tapsOf(x), rows = tapsOf(y);
    for (int i = 0; i < y.count; i++) {
        const auto [index, fraction] = rows[i];
        const uint8_t* const upperRow = advance(s.origin, rowOffset(index, s.srcStep));
        const auto lower = scaledRow(upperRow + s.srcStep, columns, biasAlong);
        // The row above the rectangle has no weight and is not read.
        const auto upper = index < 0 ? lower : scaledRow(upperRow, columns, biasAlong);
        for (int j = 0; j < x.count; j++) {
            const uint32_t sum = static_cast<uint32_t>(lower[j] * fraction + upper[j] * (16384 - fraction));
            *at(s.dst, s.dstStep, j, i) = static_cast<uint8_t>((sum + biasDown) >> 20);
        }
    }
}

}
