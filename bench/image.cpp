#include <cstdlib>

#include "image.h"

#include <random>

namespace rux::bench {
namespace {

std::minstd_rand generator(1);

}

void* alignedBytes(size_t bytes)
{
    void* block = nullptr;
    if (posix_memalign(&block, 64, bytes + 64) != 0) abort();
    return block;
}

void fillRandom(uint8_t* bytes, size_t count)
{
    for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<uint8_t>(generator() >> 8);
}

void fillRandom(int16_t* elements, size_t count)
{
    for (size_t i = 0; i < count; ++i) elements[i] = static_cast<int16_t>(generator() >> 8);
}

// All 1, so that repeated sums, differences and products neither overflow nor become subnormal.
void fillRandom(float* elements, size_t count)
{
    for (size_t i = 0; i < count; ++i) elements[i] = 1.0f;
}

}
