// One element in every place of a lane.
#pragma once

#include "frame/bytes.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename Lane, typename Element>
inline Lane spread(Element element)
{
    uint8_t bytes[Lane::size];
    for (size_t at = 0; at < Lane::size; at += sizeof(Element)) store<Element>(bytes + at, element);
    return Lane::load(bytes);
}

}
}
