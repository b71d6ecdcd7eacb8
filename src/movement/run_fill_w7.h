// The fill of a run in 16-byte stores, past the caches where the caller asks for it.
#pragma once

#include <emmintrin.h>

#include "movement/fill_pattern.h"

namespace rux::w7 {
namespace {

inline __m128i pattern128(uint32_t pattern)
{
    return _mm_set1_epi32(static_cast<int32_t>(pattern));
}

inline void storePattern(uint8_t* to, __m128i value)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value);
}

// From this many bytes on, ordinary stores go as the processor's string store: it starts slower than a loop of 16-byte
// stores, and then fills whole cache lines at a time.
constexpr size_t stringStoreBytes = 1024;

inline void storeString(uint8_t* dst, uint32_t pattern, size_t bytes)
{
    size_t words = bytes / 4;
    asm volatile("rep stosl" : "+D"(dst), "+c"(words) : "a"(pattern) : "memory");
}

// Fewer than 64 bytes: up to three 16-byte stores, then what is left of 16.
inline void fillRemainder(uint8_t* dst, uint32_t pattern, size_t bytes)
{
    const __m128i sixteen = pattern128(pattern);
    for (; bytes >= 16; dst += 16, bytes -= 16) storePattern(dst, sixteen);
    if (bytes & 8) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), sixteen);
        dst += 8;
    }
    fillSmall(dst, pattern, bytes & 7);
}

template <typename Element>
void fillBytes(uint8_t* dst, Element value, size_t bytes, bool streaming)
{
    uint32_t pattern = pattern32(value);
    if (bytes >= 64) {
        storePattern(dst, pattern128(pattern));
        const size_t head = bytesToBoundary(dst, 16);
        pattern = pattern32After(pattern, head);
        dst += head, bytes -= head;

        const __m128i sixteen = pattern128(pattern);
        if (streaming) {
            for (; bytes >= 64; dst += 64, bytes -= 64)
                for (int i = 0; i < 4; ++i) _mm_stream_si128(reinterpret_cast<__m128i*>(dst) + i, sixteen);
            _mm_sfence();
        } else if (bytes >= stringStoreBytes) {
            const size_t blocks = bytes & ~static_cast<size_t>(63);
            storeString(dst, pattern, blocks);
            dst += blocks, bytes -= blocks;
        } else {
            for (; bytes >= 64; dst += 64, bytes -= 64)
                for (int i = 0; i < 4; ++i) _mm_store_si128(reinterpret_cast<__m128i*>(dst) + i, sixteen);
        }
    }
    fillRemainder(dst, pattern, bytes);
}

}
}
