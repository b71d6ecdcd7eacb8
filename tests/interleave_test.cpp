// Channels to frames and back.
#include <memory>
#include <vector>

#include "model/signal_vectors.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Interleave, "interleave");

// Frames and their channels, each in memory of its own, and the array of pointers at any address.
struct Channels {
    Channels(int count, int frames, Random& random, bool aligned)
        : frames(frames), interleaved(imageOf(count * frames, random, aligned))
    {
        for (int c = 0; c < count; c++) {
            channels.push_back(std::make_unique<Image<int16_t>>(imageOf(frames, random, aligned)));
        }
        const int offset = random.between(0, 7);
        array.resize(sizeof(void*) * (static_cast<size_t>(count) + 1) + 8);
        first = reinterpret_cast<int16_t**>(array.data() + offset);
        for (int c = 0; c < count; c++) model::store(first + c, channels[static_cast<size_t>(c)]->data());
    }
    static Image<int16_t> imageOf(int length, Random& random, bool aligned)
    {
        const Place place = placeOf(random, aligned);
        return Image<int16_t>(vectorOf(length).at(place), random.next());
    }
    static Place placeOf(Random& random, bool aligned)
    {
        if (aligned) return {Edge::start, 16 * random.between(0, 3)};
        return random.oneIn(2) ? Place{} : Place{Edge::start, random.between(0, 63)};
    }
    int count() const { return static_cast<int>(channels.size()); }

    int frames;
    Image<int16_t> interleaved;
    std::vector<std::unique_ptr<Image<int16_t>>> channels;
    std::vector<uint8_t> array;
    int16_t** first;
};

static ruxStatus interleave(const Channels& c)
{
    return call(ruxsInterleave_16s, const_cast<const int16_t* const*>(c.first), c.count(), c.frames,
                c.interleaved.data());
}

static ruxStatus deinterleave(const Channels& c)
{
    return call(ruxsDeinterleave_16s, c.interleaved.data(), c.count(), c.frames, c.first);
}

// Twins of one seed: one for the operation, the other for the model.
template <class Operation, class Model>
static Digest compareAll(const Operation& operation, const Model& model)
{
    Digest digest;
    int misaligned = 0, aligned = 0;
    const int counts[] = {1, 2, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17};
    for (int i = 0; i < 1200 && !testing::Test::HasFailure(); i++) {
        const Note note([&] { return "case " + std::to_string(i); });
        const auto seed = static_cast<uint64_t>(i) + 1;
        const int frames = i % 80 + 1, count = counts[i % 12];
        Random one(seed), two(seed);
        const Channels body(count, frames, one, i % 3 == 0), expected(count, frames, two, i % 3 == 0);
        const ruxStatus status = operation(body);
        EXPECT_EQ(status, model(expected));
        EXPECT_TRUE(body.interleaved.equals(expected.interleaved));
        digest.add(status);
        digest.addRegion(body.interleaved);
        for (size_t c = 0; c < body.channels.size(); c++) {
            EXPECT_TRUE(body.channels[c]->equals(*expected.channels[c])) << "channel " << c;
            digest.addRegion(*body.channels[c]);
        }
        (status == ruxStatusOk ? aligned : misaligned)++;
    }
    EXPECT_GT(aligned, 300);
    EXPECT_GT(misaligned, 300);
    return digest;
}

TEST_P(Interleave, ruxsInterleave_16s)
{
    expectGolden("interleave", "ruxsInterleave_16s", level(), compareAll(interleave, [&](const Channels& c) {
        return model::ruxsInterleave_16s(level(), const_cast<const int16_t* const*>(c.first), c.count(), c.frames,
                                         c.interleaved.data());
    }));
}

TEST_P(Interleave, ruxsDeinterleave_16s)
{
    expectGolden("interleave", "ruxsDeinterleave_16s", level(), compareAll(deinterleave, [&](const Channels& c) {
        return model::ruxsDeinterleave_16s(level(), c.interleaved.data(), c.count(), c.frames, c.first);
    }));
}

// Everything aligned, and each buffer misaligned in turn.
TEST_P(Interleave, misalignmentIsAWarning)
{
    for (int odd = -1; odd < 3; odd++) {
        Random random(1);
        Channels c(2, 24, random, true);
        const Image<int16_t> other(vectorOf(100).at({Edge::start, 2}));
        Image<int16_t> frames(vectorOf(48).at({Edge::start, odd == 2 ? 2 : 0}), 9);
        if (odd == 0 || odd == 1) model::store(c.first + odd, other.data());
        const ruxStatus expected = odd < 0 ? ruxStatusOk : ruxStatusMisaligned;
        EXPECT_EQ(call(ruxsDeinterleave_16s, frames.data(), 2, 24, c.first), expected);
        const Image<int16_t> back(vectorOf(48).at({Edge::start, odd == 2 ? 2 : 0}), 10);
        EXPECT_EQ(call(ruxsInterleave_16s, const_cast<const int16_t* const*>(c.first), 2, 24, back.data()), expected);
        for (int i = 0; i < 48; i++) EXPECT_EQ(back.get(i), frames.get(i));
    }
}

TEST_P(Interleave, refusesWrongArguments)
{
    Random random(2);
    const Channels c(3, 10, random, false);
    const auto channels = const_cast<const int16_t* const*>(c.first);
    const int16_t* const* const noChannels = nullptr;
    int16_t* const* const nowhere = nullptr;
    const int16_t* const noFrames = nullptr;
    int16_t* const noPlace = nullptr;
    const auto before = c.interleaved.clone();
    for (const int32_t wrong : {0, -1, INT_MIN}) {
        EXPECT_EQ(call(ruxsInterleave_16s, channels, wrong, 10, c.interleaved.data()), ruxStatusSizeError);
        EXPECT_EQ(call(ruxsInterleave_16s, channels, 3, wrong, c.interleaved.data()), ruxStatusSizeError);
        EXPECT_EQ(call(ruxsDeinterleave_16s, c.interleaved.data(), wrong, 10, c.first), ruxStatusSizeError);
        EXPECT_EQ(call(ruxsDeinterleave_16s, c.interleaved.data(), 3, wrong, c.first), ruxStatusSizeError);
        EXPECT_EQ(call(ruxsInterleave_16s, noChannels, wrong, 10, c.interleaved.data()), ruxStatusNullPointer);
        EXPECT_EQ(call(ruxsDeinterleave_16s, noFrames, 3, wrong, c.first), ruxStatusNullPointer);
    }
    EXPECT_EQ(call(ruxsInterleave_16s, noChannels, 3, 10, c.interleaved.data()), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxsInterleave_16s, channels, 3, 10, noPlace), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxsDeinterleave_16s, noFrames, 3, 10, c.first), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxsDeinterleave_16s, c.interleaved.data(), 3, 10, nowhere), ruxStatusNullPointer);
    EXPECT_TRUE(c.interleaved.equals(before));
}

// A null channel is found before anything is written, after the sizes.
TEST_P(Interleave, nullChannel)
{
    for (int null = 0; null < 3; null++) {
        Random random(2);
        const Channels c(3, 10, random, false);
        model::store<int16_t*>(c.first + null, nullptr);
        const auto channels = const_cast<const int16_t* const*>(c.first);
        const auto before = c.interleaved.clone();
        EXPECT_EQ(call(ruxsInterleave_16s, channels, 3, 0, c.interleaved.data()), ruxStatusSizeError);
        EXPECT_EQ(interleave(c), ruxStatusNullPointer);
        EXPECT_TRUE(c.interleaved.equals(before));
        std::vector<Image<int16_t>> channelsBefore;
        for (const auto& channel : c.channels) channelsBefore.push_back(channel->clone());
        EXPECT_EQ(call(ruxsDeinterleave_16s, c.interleaved.data(), 0, 10, c.first), ruxStatusSizeError);
        EXPECT_EQ(deinterleave(c), ruxStatusNullPointer);
        for (size_t i = 0; i < 3; i++) EXPECT_TRUE(c.channels[i]->equals(channelsBefore[i]));
    }
}

}
