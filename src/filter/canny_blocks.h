// Canny as a6 and w7 have it: one vector kernel on a map of 16-bit magnitudes.
//
// The buffer holds, from its start and at any address: the map, in a frame of zeros, with the left frame element of a
// row right behind the row before it; the stack, of 32-bit numbers of map elements. A pixel is marked when it is
// pushed, so it is pushed once: of the buffer's 12 * (width + 2) * (height + 2) bytes the map takes no more than
// (2 * width + 10) * (height + 2), and the stack with the slot above its top 4 * (width * height + 1).
//
// Blocks of 4 pixels begin at a row's first pixel; a lane holds one or two of them. A block without a positive
// magnitude is left as it is, which is to be seen only where a threshold has wrapped to a negative number.
//
// The level includes its lane first, and gives for it: absolute, anyLane, laneBits, lanesBelow, anyInBlock and
// weightedGreater.
#pragma once

#include <xmmintrin.h>

#include "filter/canny.h"
#include "lanes/partial_bytes.h"

namespace rux::RUX_LEVEL {
namespace {

constexpr int16_t acceptedElement = -1;

struct Thresholds {
    int16_t low;
    int16_t high;
};

// Truncated to 32 bits, of which the lower 16 are taken. What 32 bits cannot hold becomes INT32_MIN, and so 0.
inline int16_t wrappedThreshold(float threshold)
{
    return static_cast<int16_t>(_mm_cvttss_si32(_mm_set_ss(threshold)));
}

// The level's: 255 where a row's element is accepted, otherwise 0.
void storeEdges(const uint8_t* row, uint8_t* dst, size_t width);

template <typename Words>
class BlockCanny {
public:
    BlockCanny(const CannyImages& images, Thresholds thresholds)
        : images(images), thresholds(thresholds), padded((static_cast<size_t>(images.width) + 4) & ~size_t{3}),
          stride(2 * static_cast<ptrdiff_t>(padded) + 2), map(images.buffer),
          stack(map + stride * (static_cast<ptrdiff_t>(images.height) + 2))
    {
    }

    // A row is suppressed as soon as the row below it has its magnitudes. dst, which may overlap the gradients, comes
    // last.
    void run()
    {
        fillRow(-1, 0);
        magnitudeRow(0);
        for (int32_t y = 0; y < images.height; ++y) {
            if (y + 1 < images.height)
                magnitudeRow(y + 1);
            else
                fillRow(y + 1, 0);
            suppressRow(y);
        }
        if (thresholds.low < 0) closeFrame();
        followEdges();
        for (int32_t y = 0; y < images.height; ++y)
            storeEdges(mapRow(y), images.dst + images.dstStep * y, static_cast<size_t>(images.width));
    }

private:
    static constexpr ptrdiff_t count = Words::count;

    uint8_t* mapRow(int32_t y) const { return map + stride * (ptrdiff_t{y} + 1) + 2; }

    // A whole row of the map with its frame element.
    void fillRow(int32_t y, int16_t element) const
    {
        for (ptrdiff_t at = -2; at < stride - 2; at += 2) store(mapRow(y) + at, element);
    }

    static Words firstOf(const uint8_t* row, ptrdiff_t x, ptrdiff_t width)
    {
        uint8_t lane[sizeof(Words)] = {};
        copyFewBytes<sizeof(Words)>(row + 2 * x, lane, static_cast<size_t>(2 * (width - x)));
        return Words::load(lane);
    }

    static Words magnitudes(Words dx, Words dy, Words low)
    {
        const Words sum = absolute(dx) + absolute(dy);
        return sum & isGreater(sum, low);
    }

    // The last lane of a row has zeros behind the last pixel, one at least. What it writes behind its own row belongs
    // to the next one, which has not been computed yet.
    void magnitudeRow(int32_t y) const
    {
        const uint8_t* const dx = images.dx + images.dxStep * y;
        const uint8_t* const dy = images.dy + images.dyStep * y;
        uint8_t* const row = mapRow(y);
        const Words low = Words::broadcast(thresholds.low);
        const ptrdiff_t width = images.width;
        store<int16_t>(row - 2, 0);
        ptrdiff_t x = 0;
        for (; width - x >= count; x += count)
            magnitudes(Words::load(dx + 2 * x), Words::load(dy + 2 * x), low).store(row + 2 * x);
        magnitudes(firstOf(dx, x, width), firstOf(dy, x, width), low).store(row + 2 * x);
    }

    // The larger of the two neighbours along the gradient. Those before a pixel may be negated already, those behind
    // it are not.
    Words alongGradient(const uint8_t* at, Words dx, Words dy) const
    {
        const auto neighbours = [&](ptrdiff_t offset) {
            return larger(absolute(Words::load(at - offset)), Words::load(at + offset));
        };
        const Words across = absolute(dx);
        const Words down = absolute(dy);
        const Words differ = shiftedRight<15>(dx ^ dy);   // the signs
        const Words diagonal = select(differ, neighbours(stride - 2), neighbours(stride + 2));
        const Words flat = select(weightedGreater(across, 1697, down), neighbours(2), diagonal);
        return select(weightedGreater(across, 9889, down), flat, neighbours(stride));
    }

    static Words select(Words mask, Words where, Words otherwise) { return (where & mask) | andNot(mask, otherwise); }

    // pixels: those of the lane whose block is to be looked at; all others stay as they are.
    void suppress(uint8_t* at, Words magnitude, Words pixels, Words dx, Words dy)
    {
        const Words kept = isGreater(magnitude, alongGradient(at, dx, dy));
        const Words negated = andNot(kept, pixels);
        const Words result = wrappingDifference(magnitude ^ negated, negated);
        result.store(at);
        push(laneBits(isGreater(result, Words::broadcast(thresholds.high)) & pixels), at);
    }

    void suppressRow(int32_t y)
    {
        const uint8_t* const dx = images.dx + images.dxStep * y;
        const uint8_t* const dy = images.dy + images.dyStep * y;
        uint8_t* const row = mapRow(y);
        const Words zero = Words::broadcast(0);
        const ptrdiff_t width = images.width;
        ptrdiff_t x = 0;
        for (; width - x >= count; x += count) {
            const Words magnitude = Words::load(row + 2 * x);
            const Words positive = isGreater(magnitude, zero);
            if (!anyLane(positive)) continue;
            suppress(row + 2 * x, magnitude, anyInBlock(positive), Words::load(dx + 2 * x), Words::load(dy + 2 * x));
        }
        if (x == width) return;

        // Words behind the last pixel are read and written back as they are; behind the map's last row the buffer goes
        // on by more than a lane.
        const Words inside = lanesBelow(Words::broadcast(static_cast<int16_t>(width - x)));
        const Words magnitude = Words::load(row + 2 * x);
        const Words positive = isGreater(magnitude, zero) & inside;
        if (!anyLane(positive)) return;
        suppress(row + 2 * x, magnitude, anyInBlock(positive) & inside, firstOf(dx, x, width), firstOf(dy, x, width));
    }

    // Every lane's element is written above the top; the top moves past those whose bit is set.
    void push(uint32_t bits, const uint8_t* at)
    {
        const uint32_t first = static_cast<uint32_t>((at - map) / 2);
        uint8_t* to = top;
        for (uint32_t lane = 0; lane < count; ++lane) {
            store(to, first + lane);
            to += 4 * (bits >> lane & 1);
        }
        top = to;
    }

    // The frame stops the search because 0 is not above the low threshold. Where this has wrapped to a negative number,
    // accepted elements stop it.
    void closeFrame() const
    {
        fillRow(-1, acceptedElement);
        fillRow(images.height, acceptedElement);
        for (int32_t y = 0; y < images.height; ++y) {
            uint8_t* const row = mapRow(y);
            store(row - 2, acceptedElement);
            for (size_t x = static_cast<size_t>(images.width); x < padded; ++x) store(row + 2 * x, acceptedElement);
        }
    }

    void followEdges() const
    {
        const ptrdiff_t offsets[] = {-stride, -stride - 2, -stride + 2, 2, stride + 2, stride, stride - 2, -2};
        const int16_t low = thresholds.low;
        uint8_t* const elements = map;
        uint8_t* const bottom = stack;
        uint8_t* to = markPushed();
        while (to != bottom) {
            to -= 4;
            uint8_t* const at = elements + 2 * static_cast<size_t>(load<uint32_t>(to));
            for (const ptrdiff_t offset : offsets) {
                const int16_t neighbour = load<int16_t>(at + offset);
                if (neighbour <= low || neighbour == acceptedElement) continue;
                store(at + offset, acceptedElement);
                store(to, static_cast<uint32_t>((at + offset - elements) / 2));
                to += 4;
            }
        }
    }

    // A suppressed magnitude of 1 is an accepted element already: such a pixel is not followed. Returns the new top.
    uint8_t* markPushed() const
    {
        uint8_t* to = stack;
        for (const uint8_t* from = stack; from != top; from += 4) {
            const uint32_t element = load<uint32_t>(from);
            uint8_t* const at = map + 2 * static_cast<size_t>(element);
            if (load<int16_t>(at) == acceptedElement) continue;
            store(at, acceptedElement);
            store(to, element);
            to += 4;
        }
        return to;
    }

    const CannyImages& images;
    const Thresholds thresholds;
    const size_t padded;   // elements of a row behind its frame element
    const ptrdiff_t stride;
    uint8_t* const map;
    uint8_t* const stack;
    uint8_t* top = stack;
};

}
}
