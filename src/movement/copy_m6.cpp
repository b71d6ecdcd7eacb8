// Copy in 8-byte MMX moves with ordinary stores.
#include "movement/copy.h"
#include "movement/run_copy_mmx.h"

namespace rux::m6 {
namespace {

template <typename Element>
void copyRun(const uint8_t* src, uint8_t* dst, size_t bytes, bool)
{
    copyBytes(src, dst, bytes);
}

void copyMaskedRun(const uint8_t* src, uint8_t* dst, const uint8_t* mask, size_t count)
{
    copyMaskedBytes(src, dst, mask, count);
}

}
}
