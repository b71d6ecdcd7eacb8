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

inline float sampleInDouble(const RowPhase& low, const RowPhase& high)
{
    const float lowPart = roundedToSingle(sumInDouble(low));
    return roundedToSingle(sumInDouble(high) + lowPart);
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

// The samples of one parity in some vectors.
template <int vectors>
[[gnu::always_inline]] inline void sumParts(const RowPhase& low, const RowPhase& high, __m128* samples)
{
    __m128 highPart[vectors];
    sumPhase<vectors>(low, samples);
    sumPhase<vectors>(high, highPart);
#pragma GCC unroll 4
    for (int v = 0; v < vectors; ++v) samples[v] = _mm_add_ps(highPart[v], samples[v]);
}

// Blocks of eight samples, four of each parity, as long as they last.
template <int blocks>
inline void filterBlocks(RowPhases& low, RowPhases& high, uint8_t*& dst, int32_t& samples)
{
    for (; samples >= blocks * 8; samples -= blocks * 8, dst += blocks * 32) {
        __m128 first[blocks];
        __m128 second[blocks];
        sumParts<blocks>(low.first, high.first, first);
        sumParts<blocks>(low.second, high.second, second);
#pragma GCC unroll 4
        for (int b = 0; b < blocks; ++b) {
            float* const to = reinterpret_cast<float*>(dst) + b * 8;
            _mm_store_ps(to, _mm_unpacklo_ps(first[b], second[b]));
            _mm_store_ps(to + 4, _mm_unpackhi_ps(first[b], second[b]));
        }
        passBlocks<blocks>(low);
        passBlocks<blocks>(high);
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

// A destination off a multiple of 4 meets no boundary. An odd number of samples before it changes the phases' turns.
void filterRow(RowPhases low, RowPhases high, uint8_t* dst, int32_t samples)
{
    const int32_t toBoundary = static_cast<int32_t>(bytesToBoundary(dst, 16) / 4);
    int32_t head = isAligned(dst, 4) && toBoundary < samples ? toBoundary : samples;
    samples -= head;
    for (; head > 0; --head, dst += 4, passSample(low), passSample(high))
        store(dst, sampleInDouble(low.first, high.first));
    filterBlocks<widest / 2>(low, high, dst, samples);
    filterBlocks<1>(low, high, dst, samples);
    for (; samples > 0; --samples, dst += 4, passSample(low), passSample(high))
        FourFloats{_mm_add_ss(sumInLane(high.first), sumInLane(low.first))}.storeOne(dst);
}

}
}
