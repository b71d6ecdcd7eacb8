// The row pass: vectors of four floats from the destination's 16-byte boundary on, samples before it in double.
#pragma once

#include "geometry/wavelet_inverse.h"
#include "geometry/wavelet_sse.h"

namespace rux::RUX_LEVEL {
namespace {

// Each tap four times, as in a column pass: a vector of it meets four neighbouring elements.
constexpr ptrdiff_t lanes = 4;

float* makeReversedTaps(const PickedTaps& from)
{
    return reversedTaps<lanes>(from);
}

// The phases as the next sample finds them.
inline void passSample(RowPhases& phases)
{
    const RowPhase passed = {phases.first.src + 1, phases.first.reversed, phases.first.count};
    phases.first = phases.second;
    phases.second = passed;
}

template <int blocks>
inline void passBlocks(RowPhases& phases)
{
    phases.first.src += blocks * lanes;
    phases.second.src += blocks * lanes;
}

inline double sumInDouble(const RowPhase& phase)
{
    double sum = 0.0;
    for (ptrdiff_t k = 0; k < phase.count; ++k) sum += static_cast<double>(phase.src[k]) * phase.reversed[k * lanes];
    return sum;
}

// Some vectors of one phase. Always inlined, so that the sums stay in registers.
template <int vectors>
[[gnu::always_inline]] inline void sumPhase(const RowPhase& phase, __m128* sums)
{
#pragma GCC unroll 4
    for (int v = 0; v < vectors; ++v) sums[v] = _mm_setzero_ps();
    const float* src = phase.src;
    const float* tap = phase.reversed;
    for (int32_t k = phase.count; k > 0; --k, ++src, tap += lanes) {
        const __m128 g = _mm_load_ps(tap);
#pragma GCC unroll 4
        for (int v = 0; v < vectors; ++v) sums[v] = _mm_add_ps(sums[v], _mm_mul_ps(_mm_loadu_ps(src + v * lanes), g));
    }
}

template <bool adding>
inline void putVector(float* to, __m128 sum)
{
    _mm_store_ps(to, adding ? _mm_add_ps(sum, _mm_load_ps(to)) : sum);
}

// Blocks of eight samples, four of each parity, as long as they last.
template <bool adding, int blocks>
inline void filterBlocks(RowPhases& phases, uint8_t*& dst, int32_t& samples)
{
    for (; samples >= blocks * 8; samples -= blocks * 8, dst += blocks * 32) {
        __m128 first[blocks];
        __m128 second[blocks];
        sumPhase<blocks>(phases.first, first);
        sumPhase<blocks>(phases.second, second);
#pragma GCC unroll 4
        for (int b = 0; b < blocks; ++b) {
            float* const to = reinterpret_cast<float*>(dst) + b * 8;
            putVector<adding>(to, _mm_unpacklo_ps(first[b], second[b]));
            putVector<adding>(to + 4, _mm_unpackhi_ps(first[b], second[b]));
        }
        passBlocks<blocks>(phases);
    }
}

// What is left at the end goes through the steps of a block, one lane wide.
inline __m128 sumInLane(const RowPhase& phase)
{
    __m128 sum = _mm_setzero_ps();
    for (ptrdiff_t k = 0; k < phase.count; ++k)
        sum = _mm_add_ss(sum, _mm_mul_ss(_mm_load_ss(phase.src + k), _mm_load_ss(phase.reversed + k * lanes)));
    return sum;
}

// An odd number of samples before the boundary changes the phases' turns.
template <bool adding>
void filterRow(RowPhases phases, uint8_t* dst, int32_t samples)
{
    int32_t head = outputsToBoundary(dst, samples);
    samples -= head;
    for (; head > 0; --head, dst += 4, passSample(phases)) {
        const double sum = sumInDouble(phases.first);
        store(dst, roundedToSingle(adding ? sum + load<float>(dst) : sum));
    }
    filterBlocks<adding, widest / 2>(phases, dst, samples);
    filterBlocks<adding, 1>(phases, dst, samples);
    for (; samples > 0; --samples, dst += 4, passSample(phases)) {
        const __m128 sum = sumInLane(phases.first);
        FourFloats{adding ? _mm_add_ss(sum, FourFloats::loadOne(dst).value) : sum}.storeOne(dst);
    }
}

}
}
