// Spatial moments, against the models and the contract's numbers.
#include <cmath>

#include "model/moments.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Moments, "moments");

using model::momentAbout;
using model::momentsOf;

constexpr int32_t orders[10][2] = {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 1}, {2, 1}, {1, 2}};

// An object of the library's.
class State {
public:
    explicit State(ruxAlgHint hint) { EXPECT_EQ(call(ruxiMomentInitAlloc_64f, &state, hint), 0); }
    ~State() { EXPECT_EQ(call(ruxiMomentFree_64f, state), 0); }
    State(const State&) = delete;

    ruxStatus measure(const Image<float>& image)
    {
        return call(ruxiMoments64f_32f_C1R, image.data(), image.step(), image.roi(), state);
    }
    double moment(int32_t xOrder, int32_t yOrder, ruxiPoint offset = {0, 0}, ruxStatus expected = 0) const
    {
        double value = -77;
        EXPECT_EQ(call(ruxiGetSpatialMoment_64f, state, xOrder, yOrder, 0, offset, &value), expected);
        return value;
    }

    ruxMomentState* state = nullptr;
};

static void pixels(Random& random, float* row, int count)
{
    if (random.oneIn(3)) return uniform<float>(-1000, 1000)(random, row, count);
    for (int i = 0; i < count; i++) {
        const int exponent = random.between(-40, 20);
        row[i] = std::ldexp(static_cast<float>(random.between(-8388608, 8388608)), exponent - 23);
    }
}

// To the last bit: the order of the additions, and with it the place of a row in memory, is the contract.
static void expectMoments(const State& state, const model::Moments& expected, ruxiPoint offset, Digest& digest)
{
    for (const auto& order : orders) {
        const double value = state.moment(order[0], order[1], offset);
        const double wanted = momentAbout(expected, order[0], order[1], offset);
        ASSERT_EQ(model::load<uint64_t>(&value), model::load<uint64_t>(&wanted))
            << "orders " << order[0] << ", " << order[1] << ": " << value << ", not " << wanted;
        digest.add(&value, sizeof value);
    }
}

TEST_P(Moments, ruxiMoments64f_32f_C1R)
{
    const ruxAlgHint hints[] = {0, 1, 2, 3, -1};
    Digest digest;
    for (Case& c : casesOf(imageSweep())) {
        const Note note([&] { return c.describe(); });
        const ruxAlgHint hint = hints[c.random.below(5)];
        const auto src = c.image<float>(1, pixels);
        const auto before = src.clone();
        const int32_t x = c.random.between(-3000, 3000), y = c.random.between(-3000, 3000);
        State state(hint);
        ASSERT_EQ(state.measure(src), 0);
        ASSERT_TRUE(src.equals(before));
        const auto expected = momentsOf(level(), src.data(), src.step(), src.roi(), hint);
        Digest unused;
        expectMoments(state, expected, {0, 0}, c.isGolden() ? digest : unused);
        expectMoments(state, expected, {x, y}, c.isGolden() ? digest : unused);
        if (HasFailure()) return;
    }
    expectGolden("moments", "ruxiMoments64f_32f_C1R", level(), digest);
}

// Each call replaces what the last one left.
TEST_P(Moments, measuredAgain)
{
    State state(ruxAlgHintAccurate);
    const Image<float> first(Shape{40, 9}, 1, pixels), second(Shape{7, 3}, 2, pixels);
    Digest digest;
    for (const Image<float>* image : {&first, &second, &first}) {
        ASSERT_EQ(state.measure(*image), 0);
        expectMoments(state, momentsOf(level(), image->data(), image->step(), image->roi(), ruxAlgHintAccurate), {1, 2},
                      digest);
    }
}

TEST_P(Moments, onePixel)
{
    State state(0);
    Image<float> image(Shape{1, 1});
    image.set(0, 0, 7.5f);
    ASSERT_EQ(state.measure(image), 0);
    for (const auto& order : orders) EXPECT_EQ(state.moment(order[0], order[1]), order[0] + order[1] ? 0 : 7.5);
    EXPECT_EQ(state.moment(1, 1, {2, 3}), 6 * 7.5);
}

// Coefficients that need more bits than a double has are rounded as they are formed. The sum of the pixels is 0, so
// that the cube of the offset hides none.
TEST_P(Moments, farOrigins)
{
    State state(ruxAlgHintAccurate);
    Image<float> image(Shape{2, 2});
    for (int i = 0; i < 4; i++) image.set(i % 2, i / 2, static_cast<float>(i == 0 ? -2 : i < 3));
    ASSERT_EQ(state.measure(image), 0);
    const auto expected = momentsOf(level(), image.data(), image.step(), image.roi(), ruxAlgHintAccurate);
    Digest unused;
    for (const int32_t x : {0, 1, INT_MAX, INT_MAX - 16, INT_MIN, INT_MIN + 5, 94906267}) {
        for (const int32_t y : {0, -1, INT_MAX, INT_MAX - 16, INT_MIN, 1234567891, -94906267}) {
            expectMoments(state, expected, {x, y}, unused);
        }
    }
}

// Where the origin stays, no moment is touched by the others, not even multiplied by 0.
TEST_P(Moments, infinitePixels)
{
    State state(0);
    Image<float> image(Shape{2, 2});
    for (int i = 0; i < 4; i++) image.set(i % 2, i / 2, i == 3 ? INFINITY : 1);
    ASSERT_EQ(state.measure(image), 0);
    for (const auto& order : orders) EXPECT_EQ(state.moment(order[0], order[1]), INFINITY);
    EXPECT_EQ(state.moment(-1, 2), -77);
    EXPECT_EQ(state.moment(1, 1, {4, 4}), INFINITY);

    image.set(0, 0, NAN);
    ASSERT_EQ(state.measure(image), 0);
    for (int i = 0; i < 4; i++) EXPECT_TRUE(std::isnan(state.moment(i, 0)));
}

// The x87 precision that the host has set changes nothing.
TEST_P(Moments, precisionOfTheHost)
{
    const Image<float> image(Shape{333, 5}, 1, pixels);
    for (const ruxAlgHint hint : {0, ruxAlgHint(ruxAlgHintAccurate)}) {
        const auto expected = momentsOf(level(), image.data(), image.step(), image.roi(), hint);
        for (const int bits : {24, 53, 64}) {
            const HostState host = HostState().precision(bits);
            const Note note([&] { return host.describe(); });
            State state(hint);
            EXPECT_EQ(callUnder(host, ruxiMoments64f_32f_C1R, image.data(), image.step(), image.roi(), state.state), 0);
            for (const auto& order : orders) {
                double value = -77;
                EXPECT_EQ(callUnder(host, ruxiGetSpatialMoment_64f, state.state, order[0], order[1], 0,
                                    ruxiPoint{70, -9}, &value), 0);
                EXPECT_EQ(value, momentAbout(expected, order[0], order[1], {70, -9}));
            }
        }
    }
}

TEST_P(Moments, accurateHintIsThePlainSum)
{
    if (level() == w7) return;
    const Image<float> wide(Shape{5000, 2}, 1, uniform<float>(60000, 65535));
    State fast(1), accurate(ruxAlgHintAccurate);
    ASSERT_EQ(fast.measure(wide), 0);
    ASSERT_EQ(accurate.measure(wide), 0);
    const auto plain = momentsOf(px, wide.data(), wide.step(), wide.roi(), 1);
    EXPECT_EQ(accurate.moment(3, 0), momentAbout(plain, 3, 0, {0, 0}));
    if (level() == a6) EXPECT_NE(fast.moment(3, 0), momentAbout(plain, 3, 0, {0, 0}));
    else EXPECT_EQ(fast.moment(3, 0), momentAbout(plain, 3, 0, {0, 0}));
}

TEST_P(Moments, ordersThatAreRefused)
{
    State state(0);
    ASSERT_EQ(state.measure(Image<float>(Shape{4, 4}, 1, pixels)), 0);
    EXPECT_EQ(state.moment(2, 2, {0, 0}, ruxStatusSizeError), -77);
    EXPECT_EQ(state.moment(4, 0, {0, 0}, ruxStatusSizeError), -77);
    EXPECT_EQ(state.moment(-1, 5, {0, 0}, ruxStatusSizeError), -77);
    EXPECT_EQ(state.moment(-1, 2), -77);   // no such moment: nothing is written
    EXPECT_EQ(state.moment(2, -1), -77);
    EXPECT_NE(state.moment(1, 2), -77);
}

TEST_P(Moments, channels)
{
    State state(0);
    const auto channel = [&](int32_t number) {
        double value;
        return call(ruxiGetSpatialMoment_64f, static_cast<const ruxMomentState*>(state.state), 0, 0, number,
                    ruxiPoint{0, 0}, &value);
    };
    EXPECT_EQ(channel(0), ruxStatusChannelNumber);   // nothing measured
    ASSERT_EQ(state.measure(Image<float>(Shape{4, 4}, 1, pixels)), 0);
    EXPECT_EQ(channel(0), 0);
    EXPECT_EQ(channel(1), ruxStatusChannelNumber);
    EXPECT_EQ(channel(-1), ruxStatusChannelNumber);
}

// The object as it stands in memory.
struct Fields {
    int32_t magic, hint, channels;
    double moments[48];
};

TEST_P(Moments, fieldsOfTheObject)
{
    const Image<float> image(Shape{9, 4}, 1, pixels);
    for (const ruxAlgHint hint : {0, 1, 2, 3, -1, INT_MAX, INT_MIN}) {
        State state(hint);
        auto* const fields = reinterpret_cast<Fields*>(state.state);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(fields) % 32, 0u);
        EXPECT_EQ(fields->magic, 33);
        EXPECT_EQ(fields->hint, hint);
        EXPECT_EQ(fields->channels, -1);

        for (double& moment : fields->moments) moment = 5;
        ASSERT_EQ(state.measure(image), 0);
        EXPECT_EQ(fields->magic, 33);
        EXPECT_EQ(fields->hint, hint);
        EXPECT_EQ(fields->channels, 1);
        const auto expected = momentsOf(level(), image.data(), image.step(), image.roi(), hint);
        for (size_t i = 0; i < 48; i++) EXPECT_EQ(fields->moments[i], i < 16 ? expected[i] : 0) << "slot " << i;
    }
}

// With another object's tag.
static void withWrongTag(ruxMomentState* state, const std::function<void()>& action)
{
    const auto tag = model::load<int32_t>(state);
    EXPECT_EQ(tag, 33);
    model::store<int32_t>(state, 46);
    action();
    model::store<int32_t>(state, tag);
}

TEST_P(Moments, refusesWrongArguments)
{
    State state(0);
    const Image<float> image(Shape{6, 4}, 1, pixels);
    ASSERT_EQ(state.measure(image), 0);
    const double before = state.moment(1, 1);
    ruxMomentState* const object = state.state;
    ruxMomentState* const none = nullptr;
    const float* const noImage = nullptr;
    double* const nowhere = nullptr;
    double value = -77;
    const auto measure = [&](const float* src, int32_t step, ruxiSize size, ruxMomentState* into) {
        return call(ruxiMoments64f_32f_C1R, src, step, size, into);
    };
    const auto moment = [&](ruxMomentState* from, int32_t xOrder, double* to) {
        return call(ruxiGetSpatialMoment_64f, from, xOrder, 0, 7, ruxiPoint{0, 0}, to);
    };
    EXPECT_EQ(measure(noImage, 24, image.roi(), object), ruxStatusNullPointer);
    EXPECT_EQ(measure(image.data(), 0, {0, 0}, none), ruxStatusNullPointer);
    EXPECT_EQ(moment(none, 9, &value), ruxStatusNullPointer);
    EXPECT_EQ(moment(object, 9, nowhere), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxiMomentFree_64f, none), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxiMomentInitAlloc_64f, static_cast<ruxMomentState**>(nullptr), 0), ruxStatusNullPointer);
    withWrongTag(object, [&] {
        EXPECT_EQ(measure(image.data(), 0, {0, 0}, object), ruxStatusContextMismatch);
        EXPECT_EQ(moment(object, 9, &value), ruxStatusContextMismatch);
        EXPECT_EQ(call(ruxiMomentFree_64f, object), ruxStatusContextMismatch);
    });
    for (const int32_t step : {0, -4, INT_MIN}) {
        EXPECT_EQ(measure(image.data(), step, {0, 0}, object), ruxStatusStepError);
    }
    EXPECT_EQ(measure(image.data(), 3, {0, 4}, object), ruxStatusSizeError);
    EXPECT_EQ(measure(image.data(), 3, {6, -1}, object), ruxStatusSizeError);
    EXPECT_EQ(measure(image.data(), 23, image.roi(), object), ruxStatusStrideError);
    EXPECT_EQ(moment(object, 4, &value), ruxStatusSizeError);
    EXPECT_EQ(moment(object, 3, &value), ruxStatusChannelNumber);
    EXPECT_EQ(value, -77);
    EXPECT_EQ(state.moment(1, 1), before);
}

TEST_P(Moments, outOfMemory)
{
    forEachRefusal(1, [&](bool refused) {
        double elsewhere;
        auto* const before = reinterpret_cast<ruxMomentState*>(&elsewhere);
        ruxMomentState* state = before;
        EXPECT_EQ(call(ruxiMomentInitAlloc_64f, &state, 0), refused ? ruxStatusMemoryAllocated : ruxStatusOk);
        EXPECT_EQ(state == before, refused);
        if (!refused) call(ruxiMomentFree_64f, state);
    });
}

}
