// Allocation on 32-byte boundaries: the library's only way to malloc and free.
//
// The raw pointer lies in the bytes right before the caller's block; there is no other header.
#include <stdlib.h>

#include "frame/bytes.h"
#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr size_t boundary = 32;
constexpr size_t headerBytes = boundary + sizeof(void*);

uint8_t* allocateBytes(uint32_t bytes)
{
    // The sum wraps as the contract has it; a request that wraps below the boundary would not even hold the raw
    // pointer, and there is no such block.
    const uint32_t request = static_cast<uint32_t>(bytes + headerBytes);
    if (request < boundary) return nullptr;
    void* const raw = malloc(request);
    if (!raw) return nullptr;
    const uintptr_t address = (reinterpret_cast<uintptr_t>(raw) + headerBytes - 1) & ~(boundary - 1);
    uint8_t* const block = reinterpret_cast<uint8_t*>(address);
    store(block - sizeof raw, raw);
    return block;
}

// The stride stands in stepBytes before the allocation is tried, and stays there when it fails.
template <typename Element>
Element* allocateImage(int32_t width, int32_t height, int32_t* stepBytes)
{
    if (!stepBytes) return nullptr;
    if (width < 1 || height < 1) {
        *stepBytes = 0;
        return nullptr;
    }
    const uint32_t rowBytes = static_cast<uint32_t>(width) * sizeof(Element);
    const int32_t stride = static_cast<int32_t>((rowBytes + boundary - 1) & ~static_cast<uint32_t>(boundary - 1));
    *stepBytes = stride;
    return reinterpret_cast<Element*>(ruxsMalloc_8u(wrappingProduct(height, stride)));
}

}

uint8_t* RUXCALL ruxsMalloc_8u(int32_t len)
{
    if (len < 1) return nullptr;
    return allocateBytes(static_cast<uint32_t>(len));
}

float* RUXCALL ruxsMalloc_32f(int32_t len)
{
    if (len < 1) return nullptr;
    return reinterpret_cast<float*>(allocateBytes(static_cast<uint32_t>(len) * sizeof(float)));
}

void RUXCALL ruxsFree(void* pointer)
{
    if (pointer) free(load<void*>(bytesOf(pointer) - sizeof(void*)));
}

uint8_t* RUXCALL ruxiMalloc_8u_C1(int32_t width, int32_t height, int32_t* stepBytes)
{
    return allocateImage<uint8_t>(width, height, stepBytes);
}

int16_t* RUXCALL ruxiMalloc_16s_C1(int32_t width, int32_t height, int32_t* stepBytes)
{
    return allocateImage<int16_t>(width, height, stepBytes);
}

float* RUXCALL ruxiMalloc_32f_C1(int32_t width, int32_t height, int32_t* stepBytes)
{
    return allocateImage<float>(width, height, stepBytes);
}

void RUXCALL ruxiFree(void* pointer)
{
    ruxsFree(pointer);
}

}
