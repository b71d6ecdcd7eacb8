// Copy, element by element.
#include "movement/copy.h"

namespace rux::px {
namespace {

template <typename Element>
void copyRun(const uint8_t* src, uint8_t* dst, size_t bytes, bool)
{
    for (size_t at = 0; at < bytes; at += sizeof(Element)) store(dst + at, load<Element>(src + at));
}

void copyMaskedRun(const uint8_t* src, uint8_t* dst, const uint8_t* mask, size_t count)
{
    copyMaskedBytes(src, dst, mask, count);
}

}
}
