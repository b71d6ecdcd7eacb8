// Leaves the MMX state clear, so that the caller's floating-point code finds its registers usable.
//
// A routine that holds a state and is called for each row is [[gnu::noinline]]: a compiler that saw the loop over the
// rows could compute the next row's constants behind the emms of this one.
#pragma once

#include <mmintrin.h>

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

class MmxState {
public:
    MmxState() = default;
    MmxState(const MmxState&) = delete;
    MmxState& operator=(const MmxState&) = delete;
    ~MmxState() { _mm_empty(); }
};

}
}
