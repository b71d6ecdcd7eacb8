// Leaves the MMX state clear, so that the caller's floating-point code finds its registers usable.
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
