#include "model/split422.h"

namespace rux::model {
namespace {

// Both directions: calls an action with each byte of the packed image and its sample in the planes.
template <class Packed, class Sample, class Action>
ruxStatus eachSample(Packed* packed, int32_t packedStep, Sample* const planes[3], const int32_t steps[3],
                     ruxiSize roiSize, const Action& action)
{
    if (!planes || !steps) return ruxStatusNullPointer;
    if (!packed || !planes[0] || !planes[1] || !planes[2]) return ruxStatusNullPointer;
    if (packedStep < 1 || steps[0] < 1 || steps[1] < 1 || steps[2] < 1) return ruxStatusStepError;
    const int32_t width = roiSize.width;
    if (width < 2 || roiSize.height < 1) return ruxStatusSizeError;
    if (width > steps[0] || width / 2 > steps[1] || width / 2 > steps[2]) return ruxStatusStrideError;
    if (int64_t(2) * width > packedStep) return ruxStatusStrideError;
    for (int y = 0; y < roiSize.height; y++) {
        for (int pair = 0; pair < width / 2; pair++) {
            Packed* const group = at(packed, packedStep, 4 * pair, y);
            action(group[0], *at(planes[0], steps[0], 2 * pair, y));
            action(group[1], *at(planes[1], steps[1], pair, y));
            action(group[2], *at(planes[0], steps[0], 2 * pair + 1, y));
            action(group[3], *at(planes[2], steps[2], pair, y));
        }
    }
    return ruxStatusOk;
}

}

ruxStatus ruxiSplit422_8u_C2P3R(Level, const uint8_t* src, int32_t srcStep, uint8_t* const dst[3],
                                const int32_t dstStep[3], ruxiSize roiSize)
{
    return eachSample(src, srcStep, dst, dstStep, roiSize, [](const uint8_t& from, uint8_t& to) { to = from; });
}

ruxStatus ruxiJoin422_8u_P3C2R(Level, const uint8_t* const src[3], const int32_t srcStep[3], uint8_t* dst,
                               int32_t dstStep, ruxiSize roiSize)
{
    return eachSample(dst, dstStep, src, srcStep, roiSize, [](uint8_t& to, const uint8_t& from) { to = from; });
}

}
