// Quantisation in double precision.
#pragma once

#include "frame/float_environment.h"
#include "video/forward_quantisation_scalar.h"

namespace rux::RUX_LEVEL {
namespace {

class TruncatedProduct {
public:
    explicit TruncatedProduct(int32_t quantScale) : reciprocal(1.0 / quantScale) {}
    int32_t operator()(int32_t units, const uint8_t* weight) const
    {
        return truncated(units * reciprocal * load<float>(weight));
    }

private:
    // Toward zero whatever the rounding mode, from the parts of the number: the mantissa's upper 32 bits, its implicit
    // one included, are a fraction of 2^31 for an exponent of 1023 + 31 = 1054. From 2^32 on the result means nothing.
    static int32_t truncated(double value)
    {
        const uint64_t bits = load<uint64_t>(&value);
        const uint32_t exponent = static_cast<uint32_t>(bits >> 52) & 0x7FF;
        if (exponent <= 1022) return 0;
        const uint32_t mantissa = 0x80000000 | static_cast<uint32_t>(bits >> 21);
        const int32_t magnitude = static_cast<int32_t>(mantissa >> ((1054 - exponent) & 31));
        return bits >> 63 ? -magnitude : magnitude;
    }

    const DoublePrecision precision;
    double reciprocal;
};

void quantiseIntra(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    quantiseBlock<TruncatedProduct, IntraLevel>(1, coefficients, quantScale, matrix, count);
}

void quantise(uint8_t* coefficients, int32_t quantScale, const uint8_t* matrix, int32_t* count)
{
    quantiseBlock<TruncatedProduct, NonIntraLevel>(0, coefficients, quantScale, matrix, count);
}

}
}
