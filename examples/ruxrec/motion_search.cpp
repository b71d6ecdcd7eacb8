#include "motion_search.h"

#include <algorithm>
#include <cstdlib>

#include "motion_code.h"

namespace {

constexpr int widestStep = 8;
constexpr MotionVector around[] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}};

// The nearest vector of whole samples toward zero.
MotionVector wholeSamples(MotionVector vector)
{
    return {vector.x / 2 * 2, vector.y / 2 * 2};
}

MotionVector sum(MotionVector a, MotionVector b, int times)
{
    return {a.x + b.x * times, a.y + b.y * times};
}

}

MotionSearch::MotionSearch(const CodingPicture& picture, const Frame& reference, SearchSettings settings)
    : picture_(picture), plane_(reference[0]), source_(picture.source[0]), settings_(settings),
      worthOfBit_(worthOfBitAbsolute(quantiserScale(settings.quantiser))),
      fCode_{fCodeFor(2 * settings.range), fCodeFor(2 * settings.range)}, found_(picture.index(0, picture.down()))
{
}

MotionField MotionSearch::run(const MotionField& hints)
{
    for (y_ = 0; y_ < picture_.down(); ++y_)
        for (x_ = 0; x_ < picture_.across(); ++x_) found_[picture_.index(x_, y_)] = find(hints);
    return found_;
}

MotionVector MotionSearch::find(const MotionField& hints)
{
    const size_t here = picture_.index(x_, y_);
    const size_t across = size_t(picture_.across());
    block_ = picture_.sourceAt(0, x_, y_);
    predicted_ = x_ > 0 ? found_[here - 1] : MotionVector{};
    best_ = {{}, endlessCost};

    tryWhole({});
    tryWhole(wholeSamples(predicted_));
    if (y_ > 0) {
        tryWhole(wholeSamples(found_[here - across]));
        if (x_ + 1 < picture_.across()) tryWhole(wholeSamples(found_[here - across + 1]));
    }
    if (!hints.empty()) {
        tryWhole(wholeSamples(hints[here]));
        if (x_ + 1 < picture_.across()) tryWhole(wholeSamples(hints[here + 1]));
        if (y_ + 1 < picture_.down()) tryWhole(wholeSamples(hints[here + across]));
    }
    descend();
    refineToHalf();
    return best_.vector;
}

bool MotionSearch::isInside(MotionVector vector) const
{
    const int reach = 2 * settings_.range;
    const int left = x_ * 16 + (vector.x >> 1), top = y_ * 16 + (vector.y >> 1);
    return std::abs(vector.x) <= reach && std::abs(vector.y) <= reach && left >= 0 && top >= 0 &&
           left + 16 + (vector.x & 1) <= plane_.width && top + 16 + (vector.y & 1) <= plane_.height;
}

Cost MotionSearch::weighed(int absoluteDifferences, MotionVector vector) const
{
    return costOf(absoluteDifferences, vectorLength(picture_.tables, fCode_, vector, predicted_), worthOfBit_);
}

void MotionSearch::tryWhole(MotionVector vector)
{
    if (!isInside(vector) || (best_.vector == vector && best_.cost < endlessCost)) return;
    const uint8_t* const samples =
        plane_.samples + int64_t(y_ * 16 + vector.y / 2) * plane_.step + x_ * 16 + vector.x / 2;
    int32_t absoluteDifferences;
    ruxiSAD16x16_8u32s(block_, source_.step, samples, plane_.step, &absoluteDifferences, mcFullPel);
    const Cost cost = weighed(absoluteDifferences, vector);
    if (cost < best_.cost) best_ = {vector, cost};
}

// Goes to the best of the eight places around as long as there is a better one, with steps that shrink.
void MotionSearch::descend()
{
    for (int step = std::min(widestStep, settings_.range); step > 0; step /= 2)
        for (MotionVector from;;) {
            from = best_.vector;
            for (const MotionVector direction : around) tryWhole(sum(from, direction, 2 * step));
            if (best_.vector == from) break;
        }
}

void MotionSearch::refineToHalf()
{
    const MotionVector whole = best_.vector;
    const int left = x_ * 16 + whole.x / 2, top = y_ * 16 + whole.y / 2;
    window_.load(plane_, left - 1, top - 1);
    for (const MotionVector direction : around) {
        const MotionVector vector = sum(whole, direction, 1);
        if (!isInside(vector)) continue;
        int32_t absoluteDifferences;
        ruxiSAD16x16_8u32s(block_, source_.step, window_.at(x_ * 16 + (vector.x >> 1), y_ * 16 + (vector.y >> 1)),
                           ReferenceWindow::step, &absoluteDifferences,
                           (vector.x & 1) * mcHalfHorz + (vector.y & 1) * mcHalfVert);
        const Cost cost = weighed(absoluteDifferences, vector);
        if (cost < best_.cost) best_ = {vector, cost};
    }
}
