// Residuals in SSE2, a row of the block in a register.
#include <type_traits>

#include "lanes/samples_w7.h"

#include "video/half_pel_pairs_bytes.h"

namespace rux::w7 {
namespace {

template <int size>
struct SamplesOf {
    using Type = std::conditional_t<size == 16, Samples16, Samples8>;
};

struct Registers {};

}
}

#include "video/difference_vector.h"
