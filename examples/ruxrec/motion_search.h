// Finds the vectors of a picture into one of its references.
#pragma once

#include "coding_picture.h"
#include "cost.h"
#include "reference_window.h"

struct SearchSettings {
    int range = 0;       // in whole samples, each way
    int quantiser = 0;   // what the bits of vectors are weighed by
};

class MotionSearch {
public:
    MotionSearch(const CodingPicture& picture, const Frame& reference, SearchSettings settings);

    // hints: a field of vectors that are likely, such as those of the picture before; can be empty.
    MotionField run(const MotionField& hints);

private:
    struct Best {
        MotionVector vector;
        Cost cost;
    };

    MotionVector find(const MotionField& hints);
    bool isInside(MotionVector vector) const;
    void tryWhole(MotionVector vector);
    void descend();
    void refineToHalf();
    Cost weighed(int absoluteDifferences, MotionVector vector) const;

    const CodingPicture& picture_;
    const Plane& plane_;
    const Plane& source_;
    const SearchSettings settings_;
    const Cost worthOfBit_;
    int fCode_[2];
    MotionField found_;
    ReferenceWindow window_;

    // Of the macroblock at work.
    int x_ = 0;
    int y_ = 0;
    const uint8_t* block_ = nullptr;
    MotionVector predicted_;
    Best best_ = {};
};
