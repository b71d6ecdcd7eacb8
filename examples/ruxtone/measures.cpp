#include "measures.h"

#include <algorithm>

#include "restoration.h"

namespace {

constexpr int32_t accurate = 2;   // any hint but 1

}

Measures measure(const FloatChannel& values, int rate, int32_t window)
{
    const FloatChannel sizes = magnitudes(values);
    const int32_t length = int32_t(values.size());
    Measures measures = {double(window) / rate, {}, {}, {}};
    for (int32_t begin = 0; begin < length; begin += window) {
        const int32_t count = std::min(window, length - begin);
        float sum, mean, changes;
        require(ruxsSum_32f(sizes.data() + begin, count, &sum, accurate));
        require(ruxsMean_32f(values.data() + begin, count, &mean, accurate));
        // From the sample before, so that no crossing is lost between two windows.
        const int32_t before = begin > 0;
        require(ruxsSignChangeRate_32f(values.data() + begin - before, count + before, &changes));
        measures.level.push_back(sum / float(count));
        measures.mean.push_back(mean);
        measures.crossings.push_back(changes * float(rate) / float(count));
    }
    return measures;
}

double crossingRate(const Channel& channel, int rate)
{
    int32_t count = 0;
    require(ruxsSignChangeRate_16s(channel.data(), int32_t(channel.size()), &count));
    return double(count) * rate / double(channel.size());
}
