// Residuals, sample by sample.
#include "video/difference_scalar.h"

namespace rux::px {
namespace {

template <int size>
void subtract(Reference src, Reference reference, int mode, WordBlock residual, WordBlock prediction,
              int32_t roundControl)
{
    scalarKernels<size>[mode](src, reference, residual, prediction, roundControl);
}

template <int size>
void subtractBoth(Reference src, Reference forward, int forwardMode, Reference backward, int backwardMode,
                  WordBlock residual, int32_t roundControl)
{
    scalarKernelsBoth<size>[backwardMode][forwardMode](src, forward, backward, residual, roundControl);
}

}
}
