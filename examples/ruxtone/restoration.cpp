#include "restoration.h"

#include <cmath>
#include <cstdlib>

std::vector<int32_t> removeClicks(Channel& channel, int32_t mask, float limit)
{
    const int32_t length = int32_t(channel.size());
    Channel medians(channel.size());
    require(ruxsFilterMedian_16s(channel.data(), medians.data(), length, mask));
    std::vector<int32_t> places;
    for (int32_t place = 0; place < length; ++place) {
        int16_t& sample = channel[size_t(place)];
        const int16_t median = medians[size_t(place)];
        if (float(std::abs(sample - median)) <= limit * fullScale) continue;
        sample = median;
        places.push_back(place);
    }
    return places;
}

FloatChannel toFloats(const Channel& channel)
{
    FloatChannel values(channel.size());
    require(ruxsConvert_16s32f(channel.data(), values.data(), int32_t(channel.size())));
    for (float& value : values) value /= fullScale;
    return values;
}

Channel toSamples(FloatChannel values)
{
    const int32_t length = int32_t(values.size());
    require(ruxsThreshold_32f_I(values.data(), length, 1 - 1 / fullScale, ruxCmpGreater));
    require(ruxsThreshold_32f_I(values.data(), length, -1, ruxCmpLess));
    Channel samples(values.size());
    for (size_t place = 0; place < values.size(); ++place)
        samples[place] = int16_t(std::lround(values[place] * fullScale));
    return samples;
}

FloatChannel magnitudes(const FloatChannel& values)
{
    FloatChannel result(values.size());
    for (size_t place = 0; place < values.size(); ++place) result[place] = std::fabs(values[place]);
    return result;
}

void applyPower(FloatChannel& values, float exponent)
{
    const FloatChannel sizes = magnitudes(values);
    FloatChannel powers(values.size());
    require(ruxsPowx_32f_A11(sizes.data(), exponent, powers.data(), int32_t(powers.size())));
    for (size_t place = 0; place < values.size(); ++place) values[place] = std::copysign(powers[place], values[place]);
}
