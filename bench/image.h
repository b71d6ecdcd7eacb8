// Images to time with: aligned to a cache line, rows without gaps, filled with random bytes or floats of 1.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "bench.h"

namespace rux::bench {

void* alignedBytes(size_t bytes);
void fillRandom(uint8_t* bytes, size_t count);
void fillRandom(int16_t* elements, size_t count);
void fillRandom(uint16_t* elements, size_t count);
void fillRandom(int32_t* elements, size_t count);
void fillRandom(float* elements, size_t count);

template <typename Element>
class Image {
public:
    Image(Size size, int32_t channels = 1)
        : step_(size.width * channels * static_cast<int32_t>(sizeof(Element))),
          count(static_cast<size_t>(size.width) * channels * size.height),
          memory(static_cast<Element*>(alignedBytes(count * sizeof(Element))), [](Element* block) { ::free(block); })
    {
        fillRandom(memory.get(), count);
    }

    Element* data() const { return memory.get(); }
    int32_t step() const { return step_; }
    size_t bytes() const { return count * sizeof(Element); }

private:
    int32_t step_;
    size_t count;
    std::shared_ptr<Element> memory;
};

}
