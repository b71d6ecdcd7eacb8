// Residuals in MMX registers, eight samples at a time.
#pragma once

#include "frame/mmx_state.h"
#include "lanes/samples_mmx.h"

namespace rux::RUX_LEVEL {
namespace {

template <int size>
struct SamplesOf {
    using Type = Samples8;
};

using Registers = MmxState;

}
}

#include "video/difference_vector.h"
