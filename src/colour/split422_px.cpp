// Packed 4:2:2, pair by pair.
#include "colour/split422_scalar.h"

namespace rux::px {
namespace {

void splitRow(const uint8_t* packed, SplitRow planes, size_t pairs)
{
    splitPairs(packed, planes, 0, pairs);
}

void joinRow(JoinRow planes, uint8_t* packed, size_t pairs)
{
    joinPairs(planes, packed, 0, pairs);
}

}
}
