// The copy of a run in 16-byte moves, with stores past the caches where the caller asks for them.
#pragma once

#include <emmintrin.h>

#include "frame/bytes.h"

namespace rux::w7 {
namespace {

inline __m128i loadSixteen(const uint8_t* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

inline void storeSixteen(uint8_t* to, __m128i value)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), value);
}

// Streaming stores are not used where the destination runs 16 to 320 bytes ahead of the source modulo 64 KiB:
// loads and stores would meet in the same places of the caches.
inline bool mayStream(const uint8_t* src, const uint8_t* dst)
{
    const uintptr_t distance =
        (reinterpret_cast<uintptr_t>(src) - reinterpret_cast<uintptr_t>(dst)) & 0xFFFF;
    return distance < 0xFEC0 || distance > 0xFFF0;
}

// From this many bytes on, ordinary stores go as the processor's string move: it starts slower than a loop of 16-byte
// stores, and then fills whole cache lines at a time.
constexpr size_t stringMoveBytes = 2048;

inline void moveString(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    size_t words = bytes / 4;
    asm volatile("rep movsl" : "+S"(src), "+D"(dst), "+c"(words) : : "memory");
}

// 64-byte blocks onto a destination on a 16-byte boundary.
template <void storeAligned(__m128i*, __m128i)>
void copyBlocks(const uint8_t* src, uint8_t* dst, size_t blocks)
{
    for (; blocks > 0; --blocks, src += 64, dst += 64) {
        const __m128i a = loadSixteen(src);
        const __m128i b = loadSixteen(src + 16);
        const __m128i c = loadSixteen(src + 32);
        const __m128i d = loadSixteen(src + 48);
        __m128i* const to = reinterpret_cast<__m128i*>(dst);
        storeAligned(to, a);
        storeAligned(to + 1, b);
        storeAligned(to + 2, c);
        storeAligned(to + 3, d);
    }
}

inline void storeOrdinary(__m128i* to, __m128i value)
{
    _mm_store_si128(to, value);
}

inline void storeStreaming(__m128i* to, __m128i value)
{
    _mm_stream_si128(to, value);
}

// Fewer than 64 bytes, in steps of 8 and then at most one each of 4, 2 and 1.
void copyRemainder(const uint8_t* src, uint8_t* dst, size_t bytes)
{
    for (; bytes >= 8; src += 8, dst += 8, bytes -= 8) store(dst, load<uint64_t>(src));
    if (bytes & 4) {
        store(dst, load<uint32_t>(src));
        src += 4, dst += 4;
    }
    if (bytes & 2) {
        store(dst, load<uint16_t>(src));
        src += 2, dst += 2;
    }
    if (bytes & 1) *dst = *src;
}

void copyBytes(const uint8_t* src, uint8_t* dst, size_t bytes, bool streaming)
{
    if (bytes >= 64) {
        storeSixteen(dst, loadSixteen(src));
        const size_t head = bytesToBoundary(dst, 16);
        src += head, dst += head, bytes -= head;

        const size_t blocks = bytes / 64;
        if (streaming && mayStream(src, dst)) {
            copyBlocks<storeStreaming>(src, dst, blocks);
            _mm_sfence();
        } else if (bytes >= stringMoveBytes) {
            moveString(src, dst, blocks * 64);
        } else {
            copyBlocks<storeOrdinary>(src, dst, blocks);
        }
        src += blocks * 64, dst += blocks * 64, bytes -= blocks * 64;
    }
    copyRemainder(src, dst, bytes);
}

}
}
