// Norms of 8-bit and 16-bit images a lane at a time.
//
// The level includes the header that gives its integer lane's arithmetic first.
#pragma once

#include "arith/lane_sums.h"
#include "arith/norm_diff.h"

namespace rux::RUX_LEVEL {
namespace {

// |a - b| with each element's sum still in its place, in two lanes of elements twice as wide.
template <typename Lane>
struct WideDifferences {
    Lane low;
    Lane high;
};

template <typename Lane>
inline WideDifferences<Lane> wideDifferences(uint8_t, Lane a, Lane b)
{
    const Lane d = subtractSaturated(a, b) | subtractSaturated(b, a);
    return {widenLow8(d), widenHigh8(d)};
}

template <typename Lane>
inline WideDifferences<Lane> wideDifferences(int16_t, Lane a, Lane b)
{
    const Lane d = absoluteDifference16(a, b);
    return {widenLow16(d), widenHigh16(d)};
}

// Sums of differences as wide as wideDifferences makes them, and how many of the largest ones they hold:
// 257 * 255 = 2**16 - 1 and 65537 * 65535 = 2**32 - 1.
template <typename Element>
struct WideSum;
template <>
struct WideSum<uint8_t> {
    using Type = uint16_t;
    static constexpr size_t capacity = 257;
    template <typename Lane>
    static Lane add(Lane a, Lane b)
    {
        return add16(a, b);
    }
};
template <>
struct WideSum<int16_t> {
    using Type = uint32_t;
    static constexpr size_t capacity = 65537;
    template <typename Lane>
    static Lane add(Lane a, Lane b)
    {
        return add32(a, b);
    }
};

// Sums by place in a period of lanes, after which the channels stand in a lane as at the start. They are emptied into
// the totals when they might overflow.
template <typename Lane, typename Element, int channels>
class PlaceSums {
public:
    static constexpr int lanes = channels == 3 ? 3 : 1;

    template <typename Place>
    void add(int lane, Place place, const uint8_t* a, const uint8_t* b)
    {
        const WideDifferences<Lane> d = wideDifferences(Element(), place(a), place(b));
        sums[2 * lane] = Wide::add(sums[2 * lane], d.low);
        sums[2 * lane + 1] = Wide::add(sums[2 * lane + 1], d.high);
    }

    // The periods, a last part of one too, that can be added of those wanted: as many as there is room for.
    size_t admit(size_t periods, uint64_t* totals)
    {
        if (room == 0) empty(totals);
        if (periods > room) periods = room;
        room -= periods;
        return periods;
    }

    void empty(uint64_t* totals)
    {
        constexpr int places = Lane::size / sizeof(typename Wide::Type);
        int channel = 0;
        for (Lane& sum : sums) {
            uint8_t bytes[Lane::size];
            sum.store(bytes);
            sum = Lane{};
            for (int i = 0; i < places; ++i) {
                totals[channel] += load<typename Wide::Type>(bytes + i * sizeof(typename Wide::Type));
                if (++channel == channels) channel = 0;
            }
        }
        room = Wide::capacity;
    }

private:
    using Wide = WideSum<Element>;
    Lane sums[2 * lanes] = {};
    size_t room = Wide::capacity;
};

template <typename Lane, typename Element, int channels>
inline void sumRowByPlace(PlaceSums<Lane, Element, channels>& sums, const uint8_t* a, const uint8_t* b, size_t bytes,
                          uint64_t* totals)
{
    constexpr size_t size = Lane::size;
    constexpr int lanes = PlaceSums<Lane, Element, channels>::lanes;
    constexpr size_t period = lanes * size;
    for (size_t at = 0; at < bytes;) {
        const size_t admitted = period * sums.admit((bytes - at + period - 1) / period, totals);
        const size_t end = bytes - at > admitted ? at + admitted : bytes;
        for (; end - at >= period; at += period) {
            sums.add(0, WholeLane<Lane>{at}, a, b);
            if constexpr (lanes == 3) {
                sums.add(1, WholeLane<Lane>{at + size}, a, b);
                sums.add(2, WholeLane<Lane>{at + 2 * size}, a, b);
            }
        }
        for (int lane = 0; end - at >= size; at += size, ++lane) sums.add(lane, WholeLane<Lane>{at}, a, b);
        if (at < end) sums.add(static_cast<int>(end % period / size), PartialLane<Lane>{at, end - at}, a, b);
        at = end;
    }
}

template <typename Lane>
inline uint64_t sumRow(uint8_t, const uint8_t* a, const uint8_t* b, size_t bytes)
{
    return sumOverRow<Lane>(bytes, [=](auto place) { return sumDifferences8(place(a), place(b)); });
}

template <typename Lane>
inline uint64_t sumRow(int16_t, const uint8_t* a, const uint8_t* b, size_t bytes)
{
    return sumOverRow<Lane>(bytes, [=](auto place) {
        const WideDifferences<Lane> d = wideDifferences(int16_t(), place(a), place(b));
        return add32(d.low, d.high);
    });
}

template <typename Lane, typename Element, Layout layout>
inline void sumImages(const ImagePair& images, uint64_t* totals)
{
    constexpr int channels = channelsOf(layout);
    const size_t bytes = static_cast<size_t>(images.roiSize.width) * channels * sizeof(Element);
    if constexpr (channels == 1) {
        images.forEachRow(
            [&](const uint8_t* a, const uint8_t* b) { totals[0] += sumRow<Lane>(Element(), a, b, bytes); });
    } else {
        PlaceSums<Lane, Element, channels> sums;
        images.forEachRow([&](const uint8_t* a, const uint8_t* b) { sumRowByPlace(sums, a, b, bytes, totals); });
        sums.empty(totals);
    }
}

// Where the mask byte is zero the difference is cleared.
template <typename Lane>
inline uint64_t sumMaskedImages(const ImagePair& images, Mask mask)
{
    uint64_t total = 0;
    const uint8_t* m = mask.mask;
    images.forEachRow([&](const uint8_t* a, const uint8_t* b) {
        total += sumOverRow<Lane>(static_cast<size_t>(images.roiSize.width), [=](auto place) {
            const Lane masked = equal8(place(m), Lane{});
            return sumDifferences8(andNot(masked, place(a)), andNot(masked, place(b)));
        });
        m += mask.maskStep;
    });
    return total;
}

// The totals as doubles; they stay far below 2**53.
template <Layout layout>
inline void storeNorms(const uint64_t* totals, double* norm)
{
    for (int c = 0; c < summedChannelsOf(layout); ++c)
        store<double>(norm + c, static_cast<double>(static_cast<int64_t>(totals[c])));
}

}
}
