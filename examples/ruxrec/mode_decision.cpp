#include "mode_decision.h"

#include <algorithm>

#include "residual.h"

namespace {

constexpr size_t candidatesInFull = 2;   // the most likely of them are coded to see what they cost

// The least squared difference beside which an intra macroblock is worth a trial: one of 1 in every sample.
constexpr int32_t smallestForIntra = 256;

// Where the square of the samples' sum leaves 32 bits, as it does for bright blocks at some levels of the library, the
// result is too large by this; no block of samples varies as much.
constexpr int32_t wrapOfVariance = 1 << 24;

}

const Choice& ModeDecision::decide(int x, int y, int quantiser, const SliceState& state, const Macroblock* before)
{
    x_ = x;
    y_ = y;
    quantiser_ = quantiser;
    worthOfBit_ = worthOfBitSquared(quantiserScale(quantiser));
    state_ = &state;
    before_ = before;
    best_.cost = endlessCost;
    coder_.setQuantiser(quantiser);
    if (picture_.header.type == PictureType::I) {
        tryIntra();
        return best_;
    }

    addCandidates();
    std::stable_sort(candidates_.begin(), candidates_.end(),
                     [](const Candidate& a, const Candidate& b) { return a.estimate < b.estimate; });
    for (size_t index = 0; index < candidates_.size(); ++index)
        if (index < candidatesInFull || canBeSkipped(candidates_[index].macroblock))
            tryPrediction(candidates_[index].macroblock);

    int32_t variance;
    ruxiVariance16x16_8u32s(picture_.sourceAt(0, x, y), picture_.source[0].step, &variance);
    if (variance >= wrapOfVariance / 2) variance -= wrapOfVariance;
    if (candidates_.front().estimate > costOf(std::max(variance, smallestForIntra), 0, worthOfBit_)) tryIntra();
    return best_;
}

void ModeDecision::addCandidates()
{
    const size_t here = picture_.index(x_, y_);
    candidates_.clear();
    const MotionVector forward = picture_.reference[0] ? picture_.motion[0][here] : MotionVector{};
    if (picture_.header.type == PictureType::P) {
        addCandidate(true, false, forward, {});
        addCandidate(true, false, {}, {});
        addCandidate(true, false, state_->predicted[0], {});
        return;
    }
    const MotionVector backward = picture_.motion[1][here];
    addCandidate(false, true, {}, backward);
    if (picture_.reference[0]) {
        addCandidate(true, false, forward, {});
        addCandidate(true, true, forward, backward);
    }
    if (before_ && !before_->intra)
        addCandidate(before_->predicted[0], before_->predicted[1], before_->vector[0][0], before_->vector[0][1]);
}

void ModeDecision::addCandidate(bool forward, bool backward, MotionVector forwardVector, MotionVector backwardVector)
{
    Macroblock macroblock;
    macroblock.x = x_;
    macroblock.y = y_;
    macroblock.predicted[0] = forward;
    macroblock.predicted[1] = backward;
    if (forward) macroblock.vector[0][0] = forwardVector;
    if (backward) macroblock.vector[0][1] = backwardVector;
    for (const Candidate& other : candidates_)
        if (other.macroblock.predicted[0] == forward && other.macroblock.predicted[1] == backward &&
            other.macroblock.vector[0][0] == macroblock.vector[0][0] &&
            other.macroblock.vector[0][1] == macroblock.vector[0][1])
            return;
    if (!isInsideReferences(picture_, macroblock)) return;
    const int bits = writer_.length(*state_, macroblock, quantiser_);
    candidates_.push_back({macroblock, costOf(squaredDifference(macroblock), bits, worthOfBit_)});
}

int32_t ModeDecision::squaredDifference(const Macroblock& macroblock)
{
    const uint8_t* const block = picture_.sourceAt(0, x_, y_);
    const int32_t step = picture_.source[0].step;
    struct {
        const uint8_t* samples;
        int32_t step;
        ruxHalfPelMode mode;
    } references[2] = {};
    int count = 0;
    const bool both = macroblock.predicted[0] && macroblock.predicted[1];
    for (int direction = 0; direction < 2; ++direction) {
        if (!macroblock.predicted[direction]) continue;
        const Plane& plane = (*picture_.reference[direction])[0];
        const MotionVector vector = macroblock.vector[0][direction];
        const PredictionSource source = placeBlock(plane, wholeFrame, x_ * 16, y_ * 16, {16, 16}, vector);
        auto& reference = references[count++];
        reference = {source.samples, plane.step, source.mode};
        if (both) {
            const int left = x_ * 16 + (vector.x >> 1), top = y_ * 16 + (vector.y >> 1);
            windows_[direction].load(plane, left, top);
            reference.samples = windows_[direction].at(left, top);
            reference.step = ReferenceWindow::step;
        }
    }
    const auto& first = references[0];
    const auto& second = references[1];
    int32_t result;
    if (both)
        ruxiSqrDiff16x16B_8u32s(block, step, first.samples, first.step, first.mode, second.samples, second.step,
                                second.mode, &result);
    else
        ruxiSqrDiff16x16_8u32s(block, step, first.samples, first.step, first.mode, &result);
    return result;
}

void ModeDecision::tryIntra()
{
    Macroblock macroblock;
    macroblock.x = x_;
    macroblock.y = y_;
    macroblock.intra = true;
    coder_.codeIntra(picture_, x_, y_, state_->dcPredictor, trial_);
    const int bits = trial_.bits + writer_.length(*state_, macroblock, quantiser_);
    take(macroblock, trial_, false, costOf(trial_.distortion, bits, worthOfBit_));
}

void ModeDecision::tryPrediction(const Macroblock& predicted)
{
    Macroblock macroblock = predicted;
    makeResidual(picture_, macroblock, residual_);
    coder_.codeResidual(residual_, trial_);
    if (trial_.coded) {
        macroblock.codedBlocks = trial_.coded;
        const int bits = trial_.bits + writer_.length(*state_, macroblock, quantiser_);
        take(macroblock, trial_, false, costOf(trial_.distortion, bits, worthOfBit_));
        macroblock.codedBlocks = trial_.coded = 0;
    }
    const bool skipped = canBeSkipped(macroblock);
    const int bits = skipped ? 1 : writer_.length(*state_, macroblock, quantiser_);
    take(macroblock, trial_, skipped, costOf(trial_.distortionOfNone, bits, worthOfBit_));
}

// Without blocks; the first and the last macroblock of a slice are always written. In a B picture the prediction is the
// one of the macroblock before, which an intra one has not.
bool ModeDecision::canBeSkipped(const Macroblock& macroblock) const
{
    if (!before_ || x_ + 1 == picture_.across()) return false;
    if (picture_.header.type == PictureType::P) return macroblock.vector[0][0] == MotionVector{};
    for (int direction = 0; direction < 2; ++direction)
        if (macroblock.predicted[direction] != before_->predicted[direction] ||
            macroblock.vector[0][direction] != before_->vector[0][direction])
            return false;
    return true;
}

void ModeDecision::take(const Macroblock& macroblock, const CodedBlocks& blocks, bool skipped, Cost cost)
{
    if (cost >= best_.cost) return;
    best_.macroblock = macroblock;
    best_.blocks = blocks;
    best_.skipped = skipped;
    best_.cost = cost;
}
