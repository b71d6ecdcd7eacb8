// Fill in 8-byte MMX moves with ordinary stores.
#include "movement/run_fill_mmx.h"
#include "movement/set.h"

namespace rux::m6 {
namespace {

template <typename Element>
void fillRun(uint8_t* dst, Element value, size_t bytes, bool)
{
    fillBytes(dst, value, bytes);
}

}
}
