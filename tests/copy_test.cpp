// Copy and Set against their models, and what the contract says of them in particular.
#include "model/copy.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Copy, "copy");

TEST_P(Copy, ruxiCopy_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiCopy_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>();
        const auto dst = c.image<uint8_t>();
        compare(src, src.step(), dst, dst.step(), c.roi());
    });
}

}
