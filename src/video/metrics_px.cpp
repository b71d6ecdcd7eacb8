// Measures of a block, sample by sample.
//
// The contract's four pointers give (a + b + c + d + 2) >> 2 whatever the mode, and samples that coincide:
// (4a + 2) >> 2 is a, (2a + 2c + 2) >> 2 is (a + c + 1) >> 1.
#include "video/half_pel_scalar.h"
#include "video/metrics.h"

namespace rux::px {
namespace {

struct AbsoluteSum {
    int32_t sum = 0;
    void add(int32_t difference) { sum += difference < 0 ? -difference : difference; }
};

struct SquareSum {
    int32_t sum = 0;
    void add(int32_t difference) { sum += difference * difference; }
};

template <typename Sum, int mode>
ruxStatus measure(Reference src, Reference reference, ptrdiff_t below, int32_t* result)
{
    Sum sum;
    for (int32_t y = 0; y < blockSize; ++y) {
        for (int32_t x = 0; x < blockSize; ++x)
            sum.add(exactPrediction<mode>(reference.samples + x, below, 0) - src.samples[x]);
        src.samples += src.stride;
        reference.samples += reference.stride;
    }
    store(result, sum.sum);
    return ruxStatusOk;
}

template <typename Sum>
constexpr Kernel kernels[4] = {measure<Sum, 0>, measure<Sum, 1>, measure<Sum, 2>, measure<Sum, 3>};

inline ruxStatus absoluteDifferences(int mode, Reference src, Reference reference, ptrdiff_t below, int32_t* result)
{
    return kernels<AbsoluteSum>[mode](src, reference, below, result);
}

inline ruxStatus squares(int mode, Reference src, Reference reference, int32_t* result)
{
    return kernels<SquareSum>[mode](src, reference, reference.stride, result);
}

template <int forwardMode, int backwardMode>
ruxStatus measureBoth(Reference src, const Prediction& forward, const Prediction& backward, int32_t* result)
{
    const uint8_t *forwardRow = forward.reference.samples, *backwardRow = backward.reference.samples;
    SquareSum sum;
    for (int32_t y = 0; y < blockSize; ++y) {
        for (int32_t x = 0; x < blockSize; ++x) {
            const int32_t first = exactPrediction<forwardMode>(forwardRow + x, forward.below, 0);
            const int32_t second = exactPrediction<backwardMode>(backwardRow + x, backward.below, 0);
            sum.add(((first + second + 1) >> 1) - src.samples[x]);
        }
        src.samples += src.stride;
        forwardRow += forward.reference.stride;
        backwardRow += backward.reference.stride;
    }
    store(result, sum.sum);
    return ruxStatusOk;
}

// [backward][forward]
constexpr KernelBoth kernelsBoth[4][4] = {
    {measureBoth<0, 0>, measureBoth<1, 0>, measureBoth<2, 0>, measureBoth<3, 0>},
    {measureBoth<0, 1>, measureBoth<1, 1>, measureBoth<2, 1>, measureBoth<3, 1>},
    {measureBoth<0, 2>, measureBoth<1, 2>, measureBoth<2, 2>, measureBoth<3, 2>},
    {measureBoth<0, 3>, measureBoth<1, 3>, measureBoth<2, 3>, measureBoth<3, 3>},
};

inline KernelBoth squaresBoth(int forwardMode, int backwardMode)
{
    return kernelsBoth[backwardMode][forwardMode];
}

void storeSums(Reference src, Sums& sums)
{
    Sums sum = {};
    for (int32_t y = 0; y < blockSize; ++y) {
        for (int32_t x = 0; x < blockSize; ++x) {
            const uint32_t sample = src.samples[x];
            sum.samples += sample;
            sum.squares += sample * sample;
        }
        src.samples += src.stride;
    }
    sums = sum;
}

}
}
