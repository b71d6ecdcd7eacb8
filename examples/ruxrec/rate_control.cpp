#include "rate_control.h"

#include <algorithm>
#include <cmath>

#include "coding_picture.h"
#include "timing.h"

namespace {

// B pictures are no reference: coarser, they save bits at no cost to others.
constexpr double bPictureFactor = 1.3;

int legal(double quantiser)
{
    return std::clamp(int(std::lround(quantiser)), 1, largestQuantiser);
}

class ConstantQuantiser : public RateControl {
public:
    explicit ConstantQuantiser(int quantiser) : quantiser_(quantiser) {}

    int beginPicture(PictureType type) override
    {
        current_ = type == PictureType::B ? legal(quantiser_ * bPictureFactor) : quantiser_;
        return current_;
    }

    int sliceQuantiser(size_t, size_t) override { return current_; }
    int macroblockQuantiser(size_t, size_t) override { return current_; }
    void endPicture(size_t) override {}

private:
    const int quantiser_;
    int current_ = 0;
};

// A picture gets the share of its group's bits that its kind has needed before, and within the picture the quantiser
// follows the distance between the bits that have been spent and those that should have been.
class TargetRate : public RateControl {
public:
    TargetRate(int64_t bitRate, const Sequence& sequence, GroupShape shape)
        : macroblocks_(double(sequence.macroblocksAcross()) * sequence.macroblocksDown())
    {
        const Ratio rate = frameRate(sequence);
        bitsOfPicture_ = double(bitRate) * rate.denominator / rate.numerator;
        const int references = (shape.length + shape.bPictures) / (shape.bPictures + 1);
        count_[0] = 1;
        count_[1] = references - 1;
        count_[2] = shape.length - references;
        reaction_ = 2 * bitsOfPicture_;
        const double usual[] = {1.4, 0.5, 0.36};   // bits a second times quantiser, by kind, to begin with
        const double fullness[] = {10, 10, 14};    // the first quantisers
        for (int kind = 0; kind < 3; ++kind) {
            complexity_[kind] = usual[kind] * double(bitRate);
            fullness_[kind] = fullness[kind] * reaction_ / largestQuantiser;
        }
    }

    int beginPicture(PictureType type) override
    {
        kind_ = int(type) - 1;
        if (type == PictureType::I) {
            double length = 0;
            for (int kind = 0; kind < 3; ++kind) length += left_[kind] = count_[kind];
            owed_ = std::clamp(owed_, -length * bitsOfPicture_ / 2, length * bitsOfPicture_ / 2);
            owed_ += length * bitsOfPicture_;
        }
        static constexpr double factors[3] = {1, 1, bPictureFactor};
        double shares = 0;
        for (int kind = 0; kind < 3; ++kind)
            shares += std::max(left_[kind], double(kind == kind_)) * complexity_[kind] / complexity_[kind_] *
                      factors[kind_] / factors[kind];
        target_ = std::max(owed_ / shares, bitsOfPicture_ / 8);
        quantisers_ = 0;
        return quantiserFor(fullness_[kind_]);
    }

    int sliceQuantiser(size_t macroblock, size_t bitsOfPicture) override
    {
        current_ =
            quantiserFor(fullness_[kind_] + double(bitsOfPicture) - target_ * double(macroblock) / macroblocks_);
        return current_;
    }

    // Within a slice a change costs bits: small ones wait.
    int macroblockQuantiser(size_t macroblock, size_t bitsOfPicture) override
    {
        const int before = current_;
        if (std::abs(sliceQuantiser(macroblock, bitsOfPicture) - before) < 2) current_ = before;
        quantisers_ += current_;
        return current_;
    }

    void endPicture(size_t bits) override
    {
        fullness_[kind_] = std::clamp(fullness_[kind_] + double(bits) - target_, 0.0, reaction_);
        complexity_[kind_] = std::max(double(bits) * quantisers_ / macroblocks_, 1.0);
        owed_ -= double(bits);
        left_[kind_] = std::max(left_[kind_] - 1, 0.0);
    }

private:
    int quantiserFor(double fullness) const { return legal(fullness * largestQuantiser / reaction_); }

    const double macroblocks_;
    double bitsOfPicture_ = 0;
    double reaction_ = 0;       // the fullness that stands for the coarsest quantiser
    double count_[3] = {};      // pictures of a group, by kind: I, P, B
    double left_[3] = {};       // of the group at work
    double complexity_[3] = {}; // bits times mean quantiser of the last picture
    double fullness_[3] = {};   // bits spent beyond the targets
    double owed_ = 0;           // bits left for the group
    double target_ = 0;         // of the picture
    int kind_ = 0;
    int current_ = 0;
    double quantisers_ = 0;     // sum over the picture
};

}

std::unique_ptr<RateControl> constantQuantiser(int quantiser)
{
    return std::make_unique<ConstantQuantiser>(quantiser);
}

std::unique_ptr<RateControl> targetRate(int64_t bitRate, const Sequence& sequence, GroupShape shape)
{
    return std::make_unique<TargetRate>(bitRate, sequence, shape);
}
