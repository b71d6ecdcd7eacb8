// Access to memory at any address: elements may stand off their natural boundary and strides may be odd.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(__i386__) && defined(__MMX__)
#include <mmintrin.h>
#endif

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

template <typename T>
inline T load(const void* from)
{
    T value;
    __builtin_memcpy(&value, from, sizeof value);
    return value;
}

template <typename T>
inline void store(void* to, T value)
{
    __builtin_memcpy(to, &value, sizeof value);
}

#if defined(__i386__) && defined(__MMX__)
struct [[gnu::packed]] EightAnywhere {
    uint64_t bytes;
};

// One movq: by memcpy the compilers move an MMX vector through two general registers. In its place before the emms.
template <>
inline __m64 load<__m64>(const void* from)
{
    __m64 value;
    asm volatile("movq %1, %0" : "=y"(value) : "m"(*static_cast<const EightAnywhere*>(from)));
    return value;
}

template <>
inline void store<__m64>(void* to, __m64 value)
{
    asm volatile("movq %1, %0" : "=m"(*static_cast<EightAnywhere*>(to)) : "y"(value));
}
#endif

// The unsigned number of 1, 2 or 4 bytes.
template <size_t bytes>
struct Unsigned;
template <>
struct Unsigned<1> {
    using Type = uint8_t;
};
template <>
struct Unsigned<2> {
    using Type = uint16_t;
};
template <>
struct Unsigned<4> {
    using Type = uint32_t;
};
template <size_t bytes>
using UnsignedOf = typename Unsigned<bytes>::Type;

inline const uint8_t* bytesOf(const void* pointer)
{
    return static_cast<const uint8_t*>(pointer);
}

inline uint8_t* bytesOf(void* pointer)
{
    return static_cast<uint8_t*>(pointer);
}

// The bytes from an address up to its next multiple of a power of two.
inline size_t bytesToBoundary(const void* pointer, size_t boundary)
{
    return -reinterpret_cast<uintptr_t>(pointer) & (boundary - 1);
}

inline bool isAligned(const void* pointer, size_t boundary)
{
    return bytesToBoundary(pointer, boundary) == 0;
}

// 32-bit product as the contract forms it: it wraps.
inline int32_t wrappingProduct(int32_t a, int32_t b)
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

}
}
