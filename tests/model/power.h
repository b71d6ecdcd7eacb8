// Power with one exponent.
#pragma once

#include "model/memory.h"
#include "ruxlib/signal.h"

namespace rux::model {

// What an element must become: these bits, or a value within the accuracy class.
struct Power {
    bool exact;
    float value;            // where it is exact
    long double real;       // where it is not: x to the power y
    bool anySignOfZero;     // where it is not and underflows to zero
    ruxStatus event;
};

// `vectored`: the element is in a group that is computed without a look at special cases.
Power powerOf(Level, float x, float y, bool vectored);

// Whether a group of elements is such a group.
bool isVectored(const float* elements, int count, float y);

// Whether a result is right to 11 bits, or to the last place of a subnormal.
bool isWithinClass(const Power&, float result);

}
