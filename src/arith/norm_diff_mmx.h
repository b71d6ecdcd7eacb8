// Norms of 8-bit and 16-bit images in MMX registers.
//
// The sums are not inlined: no floating-point instruction may move in among the MMX instructions.
#pragma once

#include "arith/norm_diff_integers.h"
#include "frame/mmx_state.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Element, Layout layout>
[[gnu::noinline]] void sumWithMmx(const ImagePair& images, uint64_t* totals)
{
    const MmxState state;
    sumImages<EightBytes, Element, layout>(images, totals);
}

template <typename Element, Layout layout>
void sumIntegers(const ImagePair& images, double* norm)
{
    uint64_t totals[4] = {};
    sumWithMmx<Element, layout>(images, totals);
    storeNorms<layout>(totals, norm);
}

[[gnu::noinline]] int32_t sumMaskedBytes(const ImagePair& images, Mask mask)
{
    const MmxState state;
    return static_cast<int32_t>(sumMaskedImages<EightBytes>(images, mask));
}

}
}
