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

template <typename Element>
void fillIntegers(Element* elements, size_t count)
{
    for (size_t i = 0; i < count; ++i) elements[i] = static_cast<Element>(generator() >> 8);
}

void fillRandom(uint8_t* elements, size_t count) { fillIntegers(elements, count); }
void fillRandom(int16_t* elements, size_t count) { fillIntegers(elements, count); }
void fillRandom(uint16_t* elements, size_t count) { fillIntegers(elements, count); }
void fillRandom(int32_t* elements, size_t count) { fillIntegers(elements, count); }

// All 1, so that repeated sums, differences and products neither overflow nor become subnormal.
void fillRandom(float* elements, size_t count)
{
    for (size_t i = 0; i < count; ++i) elements[i] = 1.0f;
}

}
