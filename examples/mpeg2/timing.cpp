#include "timing.h"

#include <numeric>

namespace {

Ratio reduced(int64_t numerator, int64_t denominator)
{
    const int64_t divisor = std::gcd(numerator, denominator);
    return {int(numerator / divisor), int(denominator / divisor)};
}

}

Ratio frameRate(const Sequence& sequence)
{
    static const Ratio rates[] = {{25, 1}, {24000, 1001}, {24, 1}, {25, 1}, {30000, 1001},
                                  {30, 1}, {50, 1},       {60000, 1001}, {60, 1}};
    const Ratio rate = rates[sequence.frameRateCode < 9 ? sequence.frameRateCode : 0];
    return reduced(int64_t(rate.numerator) * (sequence.frameRateExtensionN + 1),
                   int64_t(rate.denominator) * (sequence.frameRateExtensionD + 1));
}

Ratio sampleAspect(const Sequence& sequence, ruxiSize size)
{
    switch (sequence.aspectRatioCode) {   // 1: square samples, others: the shape of the picture
    case 1: return {1, 1};
    case 2: return reduced(4 * int64_t(size.height), 3 * int64_t(size.width));
    case 3: return reduced(16 * int64_t(size.height), 9 * int64_t(size.width));
    case 4: return reduced(221 * int64_t(size.height), 100 * int64_t(size.width));
    default: return {0, 0};
    }
}
