// Replicated border in 16-byte moves: Copy's run for the middle of a row, Set's for its margins.
#include "movement/replicate_border.h"
#include "movement/run_copy_w7.h"
#include "movement/run_fill_w7.h"

namespace rux::w7 {
namespace {

constexpr bool streaming = false;   // the margins above and below are copies of rows that were just written

template <typename Element>
void copyElements(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    copyBytes(src, dst, bytes, streaming);
}

// Exactly the margin's bytes: a source that overlaps the row elsewhere is not touched.
template <typename Element>
void repeatElement(uint8_t* dst, Element value, size_t bytes)
{
    fillBytes(dst, value, bytes, streaming);
}

}
}
