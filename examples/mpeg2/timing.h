// Frame rate and sample shape as the sequence header's codes give them.
#pragma once

#include "syntax.h"
#include "ruxlib.h"

struct Ratio {
    int numerator;
    int denominator;
};

Ratio frameRate(const Sequence& sequence);                       // 25:1 where the code says nothing
Ratio sampleAspect(const Sequence& sequence, ruxiSize size);     // width to height; 0:0 where the code says nothing
