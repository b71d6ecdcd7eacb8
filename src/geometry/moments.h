// Spatial moments of a float image up to the third order.
//
// The operations stand here once; each level's file gives the sums over the image.
#pragma once

#include "frame/bytes.h"
#include "frame/checks.h"
#include "frame/float_environment.h"

struct ruxMomentState {
    int32_t magic;
    int32_t hint;
    int32_t channels;      // -1 before the first measurement
    double moments[48];    // 16 a channel, the moment of x^m * y^n at n * 4 + m
};

namespace rux::RUX_LEVEL {
namespace {

constexpr int32_t momentMagic = 33;
constexpr int32_t momentHintAccurate = 2;

// The sums of p, p * x, p * x^2 and p * x^3 over a row.
struct RowSums {
    double s0;
    double s1;
    double s2;
    double s3;
};

// Adds what a row gives to the moments: only here y comes in, once a row.
inline void addRow(double* moments, const RowSums& row, double y)
{
    const double a = row.s0 * y;
    const double b = row.s1 * y;
    const double c = a * y;
    moments[0] += row.s0;
    moments[1] += row.s1;
    moments[2] += row.s2;
    moments[3] += row.s3;
    moments[4] += a;
    moments[5] += b;
    moments[6] += row.s2 * y;
    moments[8] += c;
    moments[9] += b * y;
    moments[12] += y * c;
}

// Adds the rows of an image to cleared moments.
void addRows(const uint8_t* src, int32_t srcStep, ruxiSize roiSize, int32_t hint, double* moments);

inline ruxStatus checkMagic(const ruxMomentState* state)
{
    return require(load<int32_t>(&state->magic) == momentMagic, ruxStatusContextMismatch);
}

// The moment, of an order up to 3, about the shifted origin by binomial expansion: coefficients first, then times
// moments, from left to right. Not inlined: the caller sets the stack's precision first.
[[gnu::noinline]] double shiftedMoment(const double* m, int32_t mOrder, int32_t nOrder, ruxiPoint offset)
{
    const int32_t slot = nOrder * 4 + mOrder;
    if (offset.x == 0 && offset.y == 0) return m[slot];   // the products would make NaN of infinite moments

    const double x = offset.x;
    const double y = offset.y;
    const double xx = x * x;
    const double yy = y * y;
    switch (slot) {
    case 0: return m[0];
    case 1: return m[1] + x * m[0];
    case 2: return m[2] + 2 * x * m[1] + xx * m[0];
    case 3: return m[3] + 3 * x * m[2] + 3 * xx * m[1] + xx * x * m[0];
    case 4: return m[4] + y * m[0];
    case 5: return m[5] + x * m[4] + y * m[1] + x * y * m[0];
    case 6: return m[6] + 2 * x * m[5] + xx * m[4] + y * m[2] + 2 * x * y * m[1] + xx * y * m[0];
    case 8: return m[8] + 2 * y * m[4] + yy * m[0];
    case 9: return m[9] + x * m[8] + 2 * y * m[5] + yy * m[1] + 2 * x * y * m[4] + x * yy * m[0];
    default: return m[12] + 3 * y * m[8] + 3 * yy * m[4] + yy * y * m[0];
    }
}

}

ruxStatus RUXCALL ruxiMomentInitAlloc_64f(ruxMomentState** state, ruxAlgHint hint)
{
    if (auto failure = firstFailure(pointers(state))) return failure;

    auto* const created = reinterpret_cast<ruxMomentState*>(ruxsMalloc_8u(sizeof(ruxMomentState)));
    if (!created) return ruxStatusMemoryAllocated;
    created->magic = momentMagic;
    created->hint = hint;
    created->channels = -1;
    *state = created;
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiMomentFree_64f(ruxMomentState* state)
{
    if (auto failure = firstFailure(pointers(state))) return failure;
    if (auto failure = checkMagic(state)) return failure;

    RUX_LEVEL::ruxsFree(state);   // the level's, not the exported one
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiMoments64f_32f_C1R(const float* src, int32_t srcStep, ruxiSize roiSize, ruxMomentState* state)
{
    if (auto failure = firstFailure(pointers(src, state))) return failure;
    if (auto failure = firstFailure(checkMagic(state), steps(srcStep), sizes(roiSize),
                                    require(roiSize.width <= srcStep / 4, ruxStatusStrideError)))
        return failure;

    for (double& moment : state->moments) moment = 0.0;
    state->channels = 1;
    const DoublePrecision precision;
    addRows(bytesOf(src), srcStep, roiSize, state->hint, state->moments);
    return ruxStatusOk;
}

ruxStatus RUXCALL ruxiGetSpatialMoment_64f(const ruxMomentState* state, int32_t mOrder, int32_t nOrder,
                                           int32_t channel, ruxiPoint roiOffset, double* value)
{
    if (auto failure = firstFailure(pointers(state, value))) return failure;
    if (auto failure = firstFailure(checkMagic(state),
                                    require(int64_t(mOrder) + nOrder <= 3, ruxStatusSizeError)))
        return failure;
    if (auto failure = require(channel >= 0 && channel < state->channels, ruxStatusChannelNumber)) return failure;

    if (mOrder < 0 || nOrder < 0) return ruxStatusOk;   // no such moment: nothing is written

    const DoublePrecision precision;
    store<double>(value, shiftedMoment(state->moments + channel * 16, mOrder, nOrder, roiOffset));
    return ruxStatusOk;
}

}
