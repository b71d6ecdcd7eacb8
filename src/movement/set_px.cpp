// Fill, element by element.
#include "movement/set.h"

namespace rux::px {
namespace {

template <typename Element>
void fillRun(uint8_t* dst, Element value, size_t bytes, bool)
{
    for (size_t at = 0; at < bytes; at += sizeof(Element)) store(dst + at, value);
}

}
}
