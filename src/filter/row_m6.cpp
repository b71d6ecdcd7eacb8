// Row filter in groups of four pixels; the floating-point stack rounds to nearest even.
#include "filter/row_scalar.h"
#include "frame/rounding.h"

namespace rux::m6 {
namespace {

// The product is formed in double precision.
struct RoundedToNearest {
    double factor;

    uint8_t operator()(int32_t sum) const
    {
        const double quotient = sum * factor;
        return quotient <= 0 ? 0 : quotient >= 255 ? 255 : static_cast<uint8_t>(roundOnStack(quotient));
    }
};

void filterImage(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    const StackRounding rounding(Rounding::nearest);
    filterInFours<RoundedToNearest>(images, kernel, divisor);
}

}
}
