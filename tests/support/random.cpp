#include "support/random.h"

namespace rux::test {

void fillBytes(Random& random, void* to, size_t bytes)
{
    auto* const target = static_cast<uint8_t*>(to);
    for (size_t i = 0; i < bytes; i += 8) {
        const uint64_t word = random.next();
        std::memcpy(target + i, &word, std::min<size_t>(8, bytes - i));
    }
}

}
