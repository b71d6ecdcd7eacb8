// Mirroring in lanes of the level's width.
//
// The level gives reverseWords, reverseDoublewords and reverseBytes of its lane.
#pragma once

#include "movement/channel_lanes.h"
#include "movement/mirror.h"

namespace rux::RUX_LEVEL {
namespace {

// What two places hold when their groups are exchanged.
template <typename Group>
struct Exchanged {
    Group a;
    Group b;
};

// Bytes that keep their order.
template <typename Lane>
struct InOrder {
    static constexpr size_t bytes = Lane::size;
    static constexpr size_t edge = 0;

    Exchanged<Lane> operator()(const uint8_t* a, const uint8_t* b) const { return {Lane::load(b), Lane::load(a)}; }
};

template <typename Lane>
struct WordsReversed {
    static constexpr size_t bytes = Lane::size;
    static constexpr size_t edge = 0;

    Exchanged<Lane> operator()(const uint8_t* a, const uint8_t* b) const
    {
        return {reverseWords(Lane::load(b)), reverseWords(Lane::load(a))};
    }
};

// All bytes of a group reversed; its pixels, whose first and third byte had changed places, are then in order again.
template <typename Lane>
class ThreeBytesReversed {
public:
    using Group = PixelGroup<Lane>;
    static constexpr size_t bytes = Group::bytes;
    static constexpr size_t edge = ThreeBytes::size;   // what the selector may read beside a group

    Exchanged<Group> operator()(const uint8_t* a, const uint8_t* b) const { return {reversed(b), reversed(a)}; }

private:
    Group reversed(const uint8_t* from) const
    {
        const Group swapped = select(from);
        return {{reverseBytes(swapped.lanes[2]), reverseBytes(swapped.lanes[1]), reverseBytes(swapped.lanes[0])}};
    }

    const ChannelSelector<Lane, ReverseDistances> select{ReverseDistances()};
};

// Pixels of which the fourth byte stays: a ^ ((a ^ b) & mask) is b where the mask is set and a elsewhere.
template <typename Lane, bool reversed>
class AlphaKept {
public:
    static constexpr size_t bytes = Lane::size;
    static constexpr size_t edge = 0;

    Exchanged<Lane> operator()(const uint8_t* from, const uint8_t* partner) const
    {
        const Lane a = Lane::load(from);
        const Lane b = Lane::load(partner);
        if (!reversed) {
            const Lane difference = (a ^ b) & colours;
            return {a ^ difference, b ^ difference};
        }
        return {a ^ ((a ^ reverseDoublewords(b)) & colours), b ^ ((b ^ reverseDoublewords(a)) & colours)};
    }

private:
    static constexpr uint32_t colourBits[4] = {0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF};
    const Lane colours = Lane::load(reinterpret_cast<const uint8_t*>(colourBits));
};

// Groups of two runs from the outer ends inward. The last group may lie over others: it is computed before anything is
// written and stored at the end. Pixels at an edge where no group may stand go singly. The loop takes two at a time.
template <typename Pixel, bool reversed, typename Exchange>
void exchangeGroups(const Exchange& exchanged, uint8_t* a, uint8_t* b, size_t pixels)
{
    const size_t runBytes = pixels * Pixel::size;
    const bool overlap = static_cast<size_t>(b - a) < runBytes;   // with rows longer than the stride
    if (overlap || runBytes < Exchange::bytes + 2 * Exchange::edge) {
        if (reversed)
            exchangeReversedSingly<Pixel>(a, b, pixels);
        else
            exchangeSingly<Pixel>(a, b, pixels);
        return;
    }
    const size_t last = runBytes - Exchange::edge - Exchange::bytes;
    const auto partnerOf = [=](size_t at) { return reversed ? runBytes - Exchange::bytes - at : at; };
    const auto storeAt = [=](const auto& groups, size_t at) {
        groups.a.store(a + at);
        groups.b.store(b + partnerOf(at));
    };

    const auto lastGroups = exchanged(a + last, b + partnerOf(last));
    if (Exchange::edge > 0) {
        const size_t lastPixel = runBytes - Pixel::size;
        exchangePixel<Pixel>(a, b + (reversed ? lastPixel : 0));
        exchangePixel<Pixel>(a + lastPixel, b + (reversed ? 0 : lastPixel));
    }
    size_t at = Exchange::edge;
    for (; at + Exchange::bytes < last; at += 2 * Exchange::bytes) {
        const size_t next = at + Exchange::bytes;
        const auto groups = exchanged(a + at, b + partnerOf(at));
        const auto nextGroups = exchanged(a + next, b + partnerOf(next));
        storeAt(groups, at);
        storeAt(nextGroups, next);
    }
    if (at < last) storeAt(exchanged(a + at, b + partnerOf(at)), at);
    storeAt(lastGroups, last);
}

template <typename Lane>
void exchangeLanes(ThreeBytes, uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeGroups<ThreeBytes, false>(InOrder<Lane>(), a, b, pixels);
}

template <typename Lane>
void exchangeLanes(TwoBytes, uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeGroups<TwoBytes, false>(InOrder<Lane>(), a, b, pixels);
}

template <typename Lane>
void exchangeLanes(ThreeBytesAndAlpha, uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeGroups<ThreeBytesAndAlpha, false>(AlphaKept<Lane, false>(), a, b, pixels);
}

template <typename Lane>
void exchangeReversedLanes(ThreeBytes, uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeGroups<ThreeBytes, true>(ThreeBytesReversed<Lane>(), a, b, pixels);
}

template <typename Lane>
void exchangeReversedLanes(TwoBytes, uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeGroups<TwoBytes, true>(WordsReversed<Lane>(), a, b, pixels);
}

template <typename Lane>
void exchangeReversedLanes(ThreeBytesAndAlpha, uint8_t* a, uint8_t* b, size_t pixels)
{
    exchangeGroups<ThreeBytesAndAlpha, true>(AlphaKept<Lane, true>(), a, b, pixels);
}

}
}
