// Zero crossings of 16-bit samples in MMX registers: the sign of the product is that of its high half.
#pragma once

#include "frame/mmx_state.h"
#include "signal/sign_change_rate.h"

namespace rux::RUX_LEVEL {
namespace {

// So many vectors keep each word's count below 2^15.
constexpr size_t countedVectors = 0x7FFF;

// Four places a vector, the first at src.
[[gnu::noinline]] int32_t countVectors16s(const uint8_t* src, size_t vectors)
{
    const MmxState state;
    const __m64 ones = _mm_set1_pi16(1);
    __m64 total = _mm_setzero_si64();
    while (vectors > 0) {
        size_t turn = vectors < countedVectors ? vectors : countedVectors;
        vectors -= turn;
        __m64 counts = _mm_setzero_si64();
        for (; turn > 0; --turn, src += 8) {
            const __m64 high = _mm_mulhi_pi16(load<__m64>(src - 2), load<__m64>(src));
            counts = _mm_add_pi16(counts, _mm_srli_pi16(high, 15));
        }
        total = _mm_add_pi32(total, _mm_madd_pi16(counts, ones));
    }
    return _mm_cvtsi64_si32(_mm_add_pi32(total, _mm_srli_si64(total, 32)));
}

int32_t countChanges16s(const uint8_t* src, size_t samples)
{
    const size_t vectors = (samples - 1) / 4;
    return countVectors16s(src + 2, vectors) + countChanges16sSingly(src, 1 + vectors * 4, samples);
}

}
}
