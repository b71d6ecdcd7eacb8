// Row filter, pixel by pixel.
#include "filter/row_scalar.h"

namespace rux::px {
namespace {

// The product and the sum are formed in double precision; both have a range, so that their integer does.
struct RoundedUpFromHalf {
    double factor;

    uint8_t operator()(int32_t sum) const
    {
        const double quotient = sum * factor;
        if (quotient <= 0) return 0;
        const double rounded = quotient + 0.5;
        return rounded >= 255 ? 255 : static_cast<uint8_t>(static_cast<int32_t>(rounded));
    }
};

void filterImage(const RowImages& images, const Kernel& kernel, const Divisor& divisor)
{
    filterInFours<RoundedUpFromHalf>(images, kernel, divisor);
}

}
}
