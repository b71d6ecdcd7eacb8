#include "model/metrics.h"

#include <cstdlib>

#include "model/half_pel.h"

namespace rux::model {
namespace {

bool isMode(ruxHalfPelMode mode)
{
    return mode == mcFullPel || mode == mcHalfVert || mode == mcHalfHorz || mode == mcHalfBoth;
}

// Calls an action with each place of the block.
template <class Action>
void eachPlace(const Action& action)
{
    for (int y = 0; y < 16; y++) {
        for (int x = 0; x < 16; x++) action(x, y);
    }
}

// Four samples for every mode; those that the mode does not name coincide with their neighbours.
int predictedOfFour(const uint8_t* ref, int32_t step, ruxHalfPelMode mode, int x, int y)
{
    const int32_t down = mode & mcHalfVert ? step & 255 : 0, right = mode & mcHalfHorz ? 1 : 0;
    const uint8_t* a = at(ref, step, x, y);
    const int sum = *a + *advance(a, right) + *advance(a, down) + *advance(a, down + right);
    return (sum + (mode ? 2 : 0)) >> 2;
}

}

ruxStatus ruxiSAD16x16_8u32s(Level level, const uint8_t* src, int32_t srcStep, const uint8_t* ref, int32_t refStep,
                             int32_t* result, ruxHalfPelMode mcType)
{
    if (!src || !ref || !result) return ruxStatusNullPointer;
    if (level != px && !isMode(mcType)) return ruxStatusOk;
    int32_t sum = 0;
    eachPlace([&](int x, int y) {
        const int p = level == px ? predictedOfFour(ref, refStep, mcType, x, y)
                                  : exact(neighbours(ref, refStep, mcType, x, y), mcType, 0);
        sum += std::abs(p - *at(src, srcStep, x, y));
    });
    store(result, sum);
    return ruxStatusOk;
}

ruxStatus ruxiSqrDiff16x16_8u32s(Level level, const uint8_t* src, int32_t srcStep, const uint8_t* ref,
                                 int32_t refStep, ruxHalfPelMode mcType, int32_t* result)
{
    if (!src || !ref || !result) return ruxStatusNullPointer;
    if (level != px && !isMode(mcType)) return ruxStatusOk;
    const ruxHalfPelMode mode = isMode(mcType) ? mcType : mcHalfBoth;
    int32_t sum = 0;
    eachPlace([&](int x, int y) {
        const int difference = exact(neighbours(ref, refStep, mode, x, y), mode, 0) - *at(src, srcStep, x, y);
        sum += difference * difference;
    });
    store(result, sum);
    return ruxStatusOk;
}

ruxStatus ruxiSqrDiff16x16B_8u32s(Level, const uint8_t* src, int32_t srcStep, const uint8_t* refForward,
                                  int32_t refForwardStep, ruxHalfPelMode mcTypeForward, const uint8_t* refBackward,
                                  int32_t refBackwardStep, ruxHalfPelMode mcTypeBackward, int32_t* result)
{
    if (!src || !refForward || !refBackward || !result) return ruxStatusNullPointer;
    const auto predicted = [](const uint8_t* ref, int32_t step, ruxHalfPelMode mode, int x, int y) {
        return exact(neighbours(ref, step, step & 255, mode, x, y), mode, 0);
    };
    int32_t sum = 0;
    eachPlace([&](int x, int y) {
        const int pf = predicted(refForward, refForwardStep, mcTypeForward, x, y);
        const int pb = predicted(refBackward, refBackwardStep, mcTypeBackward, x, y);
        const int difference = ((pf + pb + 1) >> 1) - *at(src, srcStep, x, y);
        sum += difference * difference;
    });
    store(result, sum);
    return ruxStatusOk;
}

ruxStatus ruxiVariance16x16_8u32s(Level level, const uint8_t* src, int32_t srcStep, int32_t* result)
{
    if (!src || !result) return ruxStatusNullPointer;
    uint32_t sum = 0;
    int32_t squares = 0;
    eachPlace([&](int x, int y) {
        const int sample = *at(src, srcStep, x, y);
        sum += static_cast<uint32_t>(sample);
        squares += sample * sample;
    });
    const int32_t mean = level == w7 ? static_cast<int32_t>(uint64_t(sum) * sum >> 8)
                                     : static_cast<int32_t>(sum * sum) / 256;
    store(result, squares - mean);
    return ruxStatusOk;
}

}
