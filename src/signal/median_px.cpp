// Median sample by sample.
#include "signal/vector_copy_px.h"

#include "signal/median.h"
#include "signal/median_window.h"

namespace rux::px {
namespace {

void medianOfThree(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const Sample first = sampleAt(src, 0);
    medianOfThreeSingly(src, dst, 1, samples, first);
    putSample(dst, 0, first);
}

void medianOfFive(const uint8_t* src, uint8_t* dst, size_t samples)
{
    const Sample first = sampleAt(src, 0);
    medianOfFiveSingly(src, dst, 1, samples, first, first);
    putSample(dst, 0, first);
}

// The window in order. The leaving value gives its place to the neighbours between it and the entering one's place.
class SortedWindow {
public:
    SortedWindow(uint8_t* memory, size_t count, int32_t value)
        : sorted(reinterpret_cast<int32_t*>(memory)), count(count)
    {
        for (size_t i = 0; i < count; ++i) sorted[i] = value;
    }

    void replace(int32_t leaving, int32_t entering)
    {
        size_t at = 0;
        while (sorted[at] != leaving) ++at;
        for (; at + 1 < count && sorted[at + 1] < entering; ++at) sorted[at] = sorted[at + 1];
        for (; at > 0 && sorted[at - 1] > entering; --at) sorted[at] = sorted[at - 1];
        sorted[at] = entering;
    }

    Sample middle() const { return static_cast<Sample>(sorted[count / 2]); }

private:
    int32_t* sorted;
    size_t count;
};

void medianOfMany(uint8_t* dst, size_t samples, size_t mask, uint8_t* window, uint8_t* ring)
{
    slideMedian<int32_t>(dst, samples, mask, SortedWindow(window, mask, sampleAt(dst, 0)), ring);
}

}
}
