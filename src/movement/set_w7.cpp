// Fill in 16-byte stores; large images go past the caches.
#include "movement/run_fill_w7.h"
#include "movement/set.h"

namespace rux::w7 {
namespace {

template <typename Element>
void fillRun(uint8_t* dst, Element value, size_t bytes, bool streaming)
{
    fillBytes(dst, value, bytes, streaming);
}

}
}
