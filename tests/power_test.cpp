// The power function, against the table of special arguments and the real power.
#include <cfenv>
#include <cmath>
#include <limits>
#include <vector>

#include "model/power.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(PowerFunction, "power");

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

// NaN are quiet ones: what becomes of a signalling NaN is not promised.
static void elements(Random& random, float* row, int count)
{
    if (random.oneIn(3)) mixture<float>(random, row, count);
    else if (random.oneIn(3)) uniform<float>(-8, 8)(random, row, count);
    else uniform<float>(1, 300)(random, row, count);
    for (int i = 0; i < count; i++) {
        if (std::isnan(row[i])) row[i] = std::copysign(nan, row[i]);
        if (random.oneIn(40)) row[i] = random.oneIn(2) ? 1.0f : -1.0f;
    }
}

static float exponentOf(Random& random)
{
    const float usual[] = {0.0f,  -0.0f, 1,    -1,      2,    3,     -3,        0.5f,      -0.5f,     1 / 3.0f, 2.5f,
                           1e-3f, 100,   -101, 1e-40f,  1e10f, 1e20f, 16777215, 16777216, 33554432, -8388609,
                           infinity, -infinity, nan,    -nan, 7.25f};
    if (random.oneIn(2)) return usual[random.below(sizeof usual / sizeof *usual)];
    float y = 0;
    uniform<float>(-12, 12)(random, &y, 1);
    return y;
}

// What an element becomes in its group of four, or singly behind the last group.
static model::Power powerAt(Level level, const Image<float>& src, int i, float y)
{
    const bool grouped = i < (src.width() & ~3);
    const bool vectored = model::isVectored(src.data() + (grouped ? i & ~3 : i), grouped ? 4 : 1, y);
    return model::powerOf(level, src.get(i), y, vectored);
}

TEST_P(PowerFunction, ruxsPowx_32f_A11)
{
    Digest digest;
    long double worst = 0;
    for (Case& c : casesOf(vectorSweep())) {
        const Note note([&] { return c.describe(); });
        const auto src = c.image<float>(1, elements);
        const auto before = src.clone();
        const auto dst = c.image<float>();
        const auto untouched = dst.clone();
        const float y = exponentOf(c.random);
        const ruxStatus status = call(ruxsPowx_32f_A11, src.data(), y, dst.data(), c.width);
        ruxStatus expected = ruxStatusOk;
        for (int i = 0; i < c.width; i++) {
            const float x = src.get(i), result = dst.get(i);
            const model::Power power = powerAt(level(), src, i, y);
            if (power.event != ruxStatusOk) expected = power.event;
            ASSERT_TRUE(model::isWithinClass(power, result))
                << x << " to the power " << y << " gave " << result << ", not " << (power.exact ? power.value : power.real);
            if (!power.exact && std::isnormal(result)) worst = std::fmax(worst, std::fabs(result / power.real - 1));
        }
        ASSERT_EQ(status, expected);
        ASSERT_TRUE(src.equals(before));
        if (c.isGolden()) digest.add(status), digest.addRegion(dst);
        for (int i = 0; i < c.width; i++) dst.row(0)[4 * i] = untouched.row(0)[4 * i];
        for (int i = 0; i < 4 * c.width; i++) dst.row(0)[i] = untouched.row(0)[i];
        ASSERT_TRUE(dst.equals(untouched)) << "written outside the vector";
    }
    RecordProperty("bits", std::to_string(static_cast<double>(-std::log2(worst))));
    expectGolden("power", "ruxsPowx_32f_A11", level(), digest);
}

// Everything within the range of floats, all rows of the logarithm's table and all exponents: the worst error.
TEST_P(PowerFunction, accuracy)
{
    long double worst = 0;
    const int count = 1 << 16;
    for (const float y : {0.5f, 2.0f, -1.5f, 0.01f, 3.3f}) {
        Image<float> src(vectorOf(count)), dst(vectorOf(count));
        for (int i = 0; i < count; i++) {
            const float mantissa = 1 + static_cast<float>(i) / count;
            src.set(i, 0, std::ldexp(mantissa, i % 61 - 30));
        }
        ASSERT_EQ(call(ruxsPowx_32f_A11, src.data(), y, dst.data(), count), 0);
        for (int i = 0; i < count; i++) {
            const long double real = std::pow(static_cast<long double>(src.get(i)), static_cast<long double>(y));
            worst = std::fmax(worst, std::fabs(dst.get(i) / real - 1));
        }
    }
    std::printf("    right to %.1f bits\n", static_cast<double>(-std::log2(worst)));
    EXPECT_LT(worst, 1.0L / 2048);
}

// Large exponents, with elements whose powers reach from below the least float to above the greatest.
TEST_P(PowerFunction, largeExponents)
{
    const int count = 4096;
    for (const float y : {2.37f, 2.375f, -60.0f, 149.5f, -299.0f, 300.0f, 300.5f, -1000.0f, 1e5f}) {
        Image<float> src(vectorOf(count)), dst(vectorOf(count));
        const float octaves = std::fmin(126.0f, 2500 / std::fabs(y));
        for (int i = 0; i < count; i++) src.set(i, 0, std::exp2(octaves * (2.0f * i / count - 1)));
        ASSERT_EQ(call(ruxsPowx_32f_A11, src.data(), y, dst.data(), count), 0);
        for (int i = 0; i < count; i++)
            ASSERT_TRUE(model::isWithinClass(powerAt(level(), src, i, y), dst.get(i)))
                << src.get(i) << " to the power " << y << " gave " << dst.get(i);
    }
}

// One element alone, in the last place of a group, and among ordinary ones.
static void expectEverywhere(float x, float y, float expected, ruxStatus status)
{
    for (const int place : {0, 3, 4, 6, 9}) {
        Image<float> src(vectorOf(place == 0 ? 1 : 10), 1, constant(2.0f)), dst(vectorOf(10));
        src.set(place, 0, x);
        EXPECT_EQ(call(ruxsPowx_32f_A11, src.data(), y, dst.data(), src.width()), status) << x << " ** " << y;
        const float result = dst.get(place);
        EXPECT_EQ(model::load<uint32_t>(&result), model::load<uint32_t>(&expected))
            << x << " ** " << y << " at " << place << " gave " << result << ", not " << expected;
    }
}

TEST_P(PowerFunction, specialArguments)
{
    const float negativeNaN = model::load<float>("\x00\x00\xC0\xFF");
    const struct { float x, y, result; ruxStatus status; } numbers[] = {
        {nan, 0.0f, 1, 0}, {nan, -0.0f, 1, 0}, {-5, 0, 1, 0}, {infinity, 0, 1, 0},   // 1
        {1, nan, 1, 0}, {1, infinity, 1, 0}, {1, -infinity, 1, 0},                   // 3
        {2, nan, nan, 0}, {-1, nan, nan, 0}, {0, -nan, -nan, 0},                     // 4
        {nan, 2, nan, 0}, {-nan, 0.5f, -nan, 0}, {nan, infinity, nan, 0},            // 5
        {infinity, -2, 0, 0}, {infinity, 0.5f, infinity, 0}, {infinity, -infinity, 0, 0},                 // 6
        {-infinity, -3, -0.0f, 0}, {-infinity, -2, 0, 0}, {-infinity, -0.5f, 0, 0},                       // 7
        {-infinity, 3, -infinity, 0}, {-infinity, 2, infinity, 0}, {-infinity, infinity, infinity, 0},
        {-infinity, 16777215, -infinity, 0}, {-infinity, 16777216, infinity, 0}, {-infinity, 16777218, infinity, 0},
        {-1, infinity, 1, 0}, {-1, -infinity, 1, 0},                                                       // 8
        {2, infinity, infinity, 0}, {-2, infinity, infinity, 0}, {0.5f, infinity, 0, 0}, {-0.0f, infinity, 0, 0},   // 9
        {2, -infinity, 0, 0}, {-0.5f, -infinity, infinity, 0},                                             // 10
        {0, -infinity, infinity, 18}, {-0.0f, -infinity, infinity, 18},
        {-0.0f, -1, -infinity, 18},                                                                        // 11
        {-0.0f, 3, -0.0f, 0}, {-0.0f, 2, 0, 0}, {-0.0f, 0.5f, 0, 0},                                       // 12
        {-0.0f, -3, -infinity, 18}, {-0.0f, -2, infinity, 18}, {-0.0f, -0.5f, infinity, 18},
        {-2, 0.5f, negativeNaN, 19}, {-1e-40f, -2.5f, negativeNaN, 19},                                    // 13
        {0, 2, 0, 0}, {0, 0.5f, 0, 0}, {0, -2, infinity, 18}, {0, -0.5f, infinity, 18},                    // 14
        {-1, 3, -1, 0}, {-1, -3, -1, 0}, {-1, 2, 1, 0}, {-1, 33554432, 1, 0},                              // 15
        {-2, 300, infinity, 0}, {-2, 301, -infinity, 0}, {-2, 1001, -infinity, 0}, {-2, -1000, 0, 0}};     // 16
    for (const auto& n : numbers) expectEverywhere(n.x, n.y, n.result, n.status);
}

// What the levels below w7 do not compute.
TEST_P(PowerFunction, shortcuts)
{
    if (level() == w7) return;
    expectEverywhere(-7.3f, 1, -7.3f, 0);
    expectEverywhere(1e-40f, 1, 1e-40f, 0);
    expectEverywhere(infinity, 1, infinity, 0);
    expectEverywhere(-3, -1, static_cast<float>(1.0 / -3), 0);
    expectEverywhere(-1e-40f, -1, static_cast<float>(1.0 / -1e-40f), 0);
    expectEverywhere(nan, -nan, -nan, 0);   // y comes first
}

// An odd exponent keeps the sign between the least float and 2^-512, and loses it below.
TEST_P(PowerFunction, zeroFarBelowIsPositive)
{
    expectEverywhere(-2, -501, -0.0f, 0);
    expectEverywhere(-2, -1001, 0, 0);
}

TEST_P(PowerFunction, twoNaNAtTheHighestLevel)
{
    if (level() != w7) return;
    expectEverywhere(nan, -nan, nan, 0);
    expectEverywhere(-nan, nan, -nan, 0);
}

TEST_P(PowerFunction, ordinaryPowers)
{
    const float xs[] = {4, 9, 2, 1, 1e-40f, 6.5f, 0.001f};
    for (const float y : {0.0f, 1.0f, 0.5f}) {
        Image<float> src(vectorOf(7)), dst(vectorOf(7));
        for (int i = 0; i < 7; i++) src.set(i, 0, xs[i]);
        EXPECT_EQ(call(ruxsPowx_32f_A11, src.data(), y, dst.data(), 7), 0);
        for (int i = 0; i < 7; i++) {
            const double real = std::pow(static_cast<double>(xs[i]), static_cast<double>(y));
            EXPECT_NEAR(dst.get(i) / real, 1, 1 / 2048.0) << xs[i] << " ** " << y;
        }
    }
}

// The status is that of the last event.
TEST_P(PowerFunction, lastEventIsTold)
{
    const std::vector<float> both = {-2, 3, 0, 5, 1}, other = {0, 3, -2, 5, 1};
    std::vector<float> dst(5);
    EXPECT_EQ(call(ruxsPowx_32f_A11, both.data(), -0.5f, dst.data(), 5), 18);
    EXPECT_EQ(call(ruxsPowx_32f_A11, other.data(), -0.5f, dst.data(), 5), 19);
}

TEST_P(PowerFunction, eventsRaiseTheProcessorsFlags)
{
    const struct { float x, y; int raised; } numbers[] = {
        {0, -2, FE_DIVBYZERO}, {-0.0f, -3, FE_DIVBYZERO}, {0, -infinity, FE_DIVBYZERO}, {-2, 0.5f, FE_INVALID}};
    for (const auto& number : numbers) {
        float result = 0;
        std::feclearexcept(FE_ALL_EXCEPT);
        ruxsPowx_32f_A11(&number.x, number.y, &result, 1);
        EXPECT_TRUE(std::fetestexcept(number.raised)) << number.x << " ** " << number.y;
    }
    std::feclearexcept(FE_ALL_EXCEPT);
}

// Alone, and in a vector whose other elements are ordinary.
TEST_P(PowerFunction, noFlagWithoutAnEvent)
{
    const struct { float x, y; } numbers[] = {
        {3, 2}, {-1, 4}, {-1, -4}, {-1, 2}, {-2, 2}, {-3, 3}, {-1.05f, 4}, {infinity, 2}, {infinity, 8}, {-0.0f, 7},
        {0, 4}, {nan, 8}, {1, nan}, {2, infinity}, {0.5f, -infinity}, {1e-40f, 0.5f}, {1.01f, 301}, {-1, 16777216}};
    for (const auto& number : numbers) {
        for (const int count : {1, 9}) {
            std::vector<float> src(static_cast<size_t>(count), 1.5f), dst(src);
            src[static_cast<size_t>(count / 2)] = number.x;
            std::feclearexcept(FE_ALL_EXCEPT);
            ruxsPowx_32f_A11(src.data(), number.y, dst.data(), count);
            const int raised = std::fetestexcept(FE_DIVBYZERO | FE_INVALID);
            EXPECT_EQ(raised, 0) << number.x << " ** " << number.y << " of " << count;
        }
    }
    std::feclearexcept(FE_ALL_EXCEPT);
}

TEST_P(PowerFunction, flagsOutliveTheHostsRounding)
{
    for (const int rounding : {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
        const float zero = 0, minusTwo = -2;
        float result = 0;
        std::fesetround(rounding);
        std::feclearexcept(FE_ALL_EXCEPT);
        ruxsPowx_32f_A11(&zero, -0.5f, &result, 1);
        EXPECT_TRUE(std::fetestexcept(FE_DIVBYZERO)) << rounding;
        ruxsPowx_32f_A11(&minusTwo, -0.5f, &result, 1);
        EXPECT_TRUE(std::fetestexcept(FE_INVALID)) << rounding;
        EXPECT_EQ(std::fegetround(), rounding);
    }
    std::fesetround(FE_TONEAREST);
    std::feclearexcept(FE_ALL_EXCEPT);
}

// Whatever precision and rounding the host has set.
TEST_P(PowerFunction, stateOfTheHost)
{
    const Image<float> src(vectorOf(200), 5, elements);
    Image<float> usual(vectorOf(200), 1);
    const ruxStatus status = call(ruxsPowx_32f_A11, src.data(), 2.7f, usual.data(), 200);
    for (const HostState& state : hostStates()) {
        const Note note([&] { return state.describe(); });
        Image<float> dst(vectorOf(200), 1);
        EXPECT_EQ(callUnder(state, ruxsPowx_32f_A11, src.data(), 2.7f, dst.data(), 200), status);
        for (int i = 0; i < 200; i++) {
            EXPECT_TRUE(model::isWithinClass(powerAt(level(), src, i, 2.7f), dst.get(i)))
                << state.describe() << ": " << src.get(i) << " gave " << dst.get(i);
        }
    }
}

// The size comes before the pointers.
TEST_P(PowerFunction, refusesWrongArguments)
{
    const std::vector<float> values = {1, 2, 3, 4};
    const float* const x = values.data();
    const float* const noSource = nullptr;
    std::vector<float> results(4, -77);
    float* const dst = results.data();
    float* const nowhere = nullptr;
    for (const int32_t len : {0, -1, INT_MIN}) {
        EXPECT_EQ(call(ruxsPowx_32f_A11, x, 2.0f, dst, len), ruxStatusSizeError);
        EXPECT_EQ(call(ruxsPowx_32f_A11, noSource, 2.0f, nowhere, len), ruxStatusSizeError);
    }
    EXPECT_EQ(call(ruxsPowx_32f_A11, noSource, 2.0f, dst, 4), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxsPowx_32f_A11, x, 2.0f, nowhere, 4), ruxStatusNullPointer);
    EXPECT_EQ(dst[0], -77);
}

}
