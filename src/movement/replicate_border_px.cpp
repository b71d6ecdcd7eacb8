// Replicated border, element by element.
#include "movement/replicate_border.h"

namespace rux::px {
namespace {

template <typename Element>
void copyElements(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (size_t at = 0; at < bytes; at += sizeof(Element)) store(dst + at, load<Element>(src + at));
}

template <typename Element>
void repeatElement(uint8_t* dst, Element value, size_t bytes)
{
    for (size_t at = 0; at < bytes; at += sizeof(Element)) store(dst + at, value);
}

}
}
