// Comparison of bytes with a value, a lane at a time.
//
// The level includes the header that gives its integer lane's comparisons first.
#pragma once

#include "arith/compare.h"
#include "arith/lane_rows.h"
#include "lanes/spread.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Lane, ruxCmpOp cmpOp>
class ByteComparison {
public:
    static constexpr int lanes = 1;

    explicit ByteComparison(uint8_t byte) : value(spread<Lane>(byte)), ones(spread<Lane, uint8_t>(0xFF)) {}

    Lane apply(Lane x, int) const
    {
        switch (cmpOp) {
        case ruxCmpLess: return andNot(atLeast8(x, value), ones);
        case ruxCmpLessEq: return atMost8(x, value);
        case ruxCmpEq: return equal8(x, value);
        case ruxCmpGreaterEq: return atLeast8(x, value);
        default: return andNot(atMost8(x, value), ones);
        }
    }

    void put(uint8_t* dst, Lane mask) const { mask.store(dst); }
    void putPartial(uint8_t* dst, Lane mask, size_t bytes) const { storePartial(mask, dst, bytes); }

private:
    Lane value;
    Lane ones;
};

}
}
