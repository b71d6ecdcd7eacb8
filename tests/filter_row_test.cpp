// Convolution along rows: what each level makes of a sum and a divisor, and which way a6 and w7 take.
#include <vector>

#include "block_requests.h"
#include "model/filter_row.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(FilterRow, "filter_row");

static Fill<int32_t> coefficients(Random& random)
{
    switch (random.below(6)) {
    case 0: return uniform<int32_t>(0, 3);
    case 1: return uniform<int32_t>(-9, 20);
    case 2: return uniform<int32_t>(-300, 300);
    case 3: return uniform<int32_t>(INT16_MIN, INT16_MAX);
    case 4: return uniform<int32_t>(-40000, 40000);
    default: return anyBits<int32_t>;
    }
}

static int32_t divisorOf(Random& random)
{
    switch (random.below(8)) {
    case 0: return 1;
    case 1: return 1 << random.between(1, 6);
    case 2: return 1 << random.between(1, 30);
    case 3: return -random.between(1, 200);
    case 4: return random.oneIn(2) ? INT32_MAX : INT32_MIN;
    case 5: return static_cast<int32_t>(random.next() | 1);
    default: return random.between(2, 100);
    }
}

static int kernelSizeOf(Random& random)
{
    return random.oneIn(2) ? random.between(1, 6) : random.between(1, 24);
}

// The pixels that the region reads are a row of their own: the region itself may lie beside them.
struct Source {
    Image<uint8_t> pixels;
    Element<uint8_t> region;

    Source(Image<uint8_t>&& read, int kernelSize, int xAnchor)
        : pixels(std::move(read)), region(elementOf(pixels, kernelSize - 1 - xAnchor))
    {
    }
};

static int anchorOf(Random& random, int kernelSize)
{
    return random.oneIn(5) ? random.between(-40, 40) : random.between(0, kernelSize - 1);
}

TEST_P(FilterRow, ruxiFilterRow_8u_C1R)
{
    sweep(RUX_OPERATION(ruxiFilterRow_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
        const int kernelSize = kernelSizeOf(c.random);
        const int xAnchor = anchorOf(c.random, kernelSize);
        const int32_t divisor = divisorOf(c.random);
        const auto fill = coefficients(c.random);
        const Source src(c.image<uint8_t>(Shape{c.width + kernelSize - 1, c.height}), kernelSize, xAnchor);
        const auto dst = c.image<uint8_t>();
        const auto kernel = c.vector<int32_t>(kernelSize, fill);
        compare(src.region, src.pixels.step(), dst, dst.step(), c.roi(), kernel, kernelSize, xAnchor, divisor);
    });
}

// Quotients from 0 to 255 with many remainders, by every divisor, of rows wide and narrow, of sums of both signs.
TEST_P(FilterRow, everyDivisor)
{
    std::vector<int32_t> divisors = {1000, 1023, 4096, 10001, 32767, 32768, 65535};
    for (int32_t divisor = 1; divisor <= 400; divisor++) divisors.push_back(divisor);
    for (const int32_t positive : divisors) {
        for (const int sign : {1, -1}) {
            for (const int width : {15, 64}) {
                const Image<uint8_t> src(Shape{width + 2, 5}, static_cast<uint64_t>(positive), anyBits<uint8_t>);
                const Image<uint8_t> dst(Shape{width, 5}, 2);
                Image<int32_t> kernel(vectorOf(3), 3);
                kernel.set(0, 0, sign * std::max(1, positive / 200));
                kernel.set(1, 0, sign * positive);
                kernel.set(2, 0, 0);
                agree(RUX_OPERATION(ruxiFilterRow_8u_C1R), elementOf(src, 1), src.step(), dst, dst.step(), dst.roi(),
                      kernel, 3, 1, sign * positive);
            }
        }
        if (HasFailure()) return;
    }
}

// Both ways of a6 and w7 on each side of each limit.
TEST_P(FilterRow, limitsOfTheFastWay)
{
    for (const int32_t divisor : {4, 3, -7}) {
        for (const int kernelSize : {1, 2, 3, 4, 5, 6}) {
            for (const int width : {14, 15, 16, 17, 31}) {
                for (const int32_t extreme : {0, 32767, 32768, -32768, -32769, INT32_MAX, INT32_MIN}) {
                    for (const int place : {0, kernelSize - 1}) {
                        const Image<uint8_t> src(Shape{width + kernelSize - 1, 2}, 1, uniform<uint8_t>(0, 2));
                        const Image<uint8_t> dst(Shape{width, 2}, 2);
                        Image<int32_t> kernel(vectorOf(kernelSize), 3, uniform<int32_t>(1, 30));
                        if (extreme != 0) kernel.set(place, 0, extreme);
                        agree(RUX_OPERATION(ruxiFilterRow_8u_C1R), elementOf(src, kernelSize - 1), src.step(), dst,
                              dst.step(), dst.roi(), kernel, kernelSize, 0, divisor);
                    }
                }
            }
        }
        if (HasFailure()) return;
    }
}

TEST_P(FilterRow, longKernels)
{
    for (const int kernelSize : {25, 64, 255, 259, 400}) {
        for (const int width : {9, 70}) {
            for (const int32_t divisor : {1, 8, 12345}) {
                const Image<uint8_t> src(Shape{width + kernelSize - 1, 2}, 1);
                const Image<uint8_t> dst(Shape{width, 2}, 2);
                const Image<int32_t> kernel(vectorOf(kernelSize), 3, uniform<int32_t>(-32768, 32767));
                const Image<int32_t> greatest(vectorOf(kernelSize), 4, constant<int32_t>(32767));
                for (const auto* each : {&kernel, &greatest}) {
                    agree(RUX_OPERATION(ruxiFilterRow_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), *each,
                          kernelSize, kernelSize - 1, divisor);
                }
            }
        }
    }
}

// The kernel is turned round: its first coefficient meets the rightmost pixel.
TEST_P(FilterRow, appliesTheKernelInReverse)
{
    for (const int width : {5, 40}) {
        Image<uint8_t> src(Shape{width + 3, 1}, 1, constant<uint8_t>(0));
        Image<int32_t> kernel(vectorOf(4), 2);
        for (int j = 0; j < 4; j++) kernel.set(j, 0, 10 * (j + 1));
        src.set(4, 0, 1);
        const Image<uint8_t> dst(Shape{width, 1}, 3);
        EXPECT_EQ(call(ruxiFilterRow_8u_C1R, src.data() + 2, src.step(), dst.data(), width, dst.roi(), kernel.data(), 4,
                       1, 1), 0);
        // src(2) is the bright one: x + 1 - j == 2.
        for (int x = 0; x < width; x++) EXPECT_EQ(dst.get(x), x >= 1 && x <= 4 ? 10 * x : 0) << x;
    }
}

// What a row makes of one sum: all pixels of a row so wide, by a kernel of one coefficient among zeros.
static int quotient(int width, int kernelSize, int32_t coefficient, uint8_t pixel, int32_t divisor)
{
    const Image<uint8_t> src(Shape{width + kernelSize - 1, 1}, 1, constant<uint8_t>(pixel));
    Image<int32_t> kernel(vectorOf(kernelSize), 2, constant<int32_t>(0));
    kernel.set(kernelSize / 2, 0, coefficient);
    const Image<uint8_t> dst(Shape{width, 1}, 3);
    EXPECT_EQ(call(ruxiFilterRow_8u_C1R, src.data(), src.step(), dst.data(), width, dst.roi(), kernel.data(),
                   kernelSize, kernelSize - 1, divisor), 0);
    for (int x = 1; x < width; x++) EXPECT_EQ(dst.get(x), dst.get(0)) << "of pixel " << x;
    return dst.get(0);
}

static int narrow(int32_t coefficient, uint8_t pixel, int32_t divisor)
{
    const int value = quotient(15, 3, coefficient, pixel, divisor);
    EXPECT_EQ(quotient(40, 1, coefficient, pixel, divisor), value) << "a kernel of one coefficient";
    EXPECT_EQ(quotient(40, 2, coefficient, pixel, divisor), value) << "a kernel of two coefficients";
    return value;
}

static int wide(int32_t coefficient, uint8_t pixel, int32_t divisor)
{
    const int value = quotient(16, 3, coefficient, pixel, divisor);
    EXPECT_EQ(quotient(100, 5, coefficient, pixel, divisor), value) << "a kernel of five coefficients";
    EXPECT_EQ(quotient(33, 8, coefficient, pixel, divisor), value) << "a kernel of eight coefficients";
    return value;
}

TEST_P(FilterRow, powerOfTwo)
{
    const bool fast = level() == a6 || level() == w7;
    EXPECT_EQ(narrow(3, 1, 4), 1);   // (3 + 1) >> 2
    EXPECT_EQ(wide(3, 1, 4), fast ? 0 : 1);
    EXPECT_EQ(narrow(2, 1, 4), 0);   // the addend is not half the divisor
    EXPECT_EQ(narrow(1, 1, 2), 1);
    EXPECT_EQ(wide(1, 1, 2), fast ? 0 : 1);
    EXPECT_EQ(narrow(0, 1, 2), 0);
}

// {1, 2, 1} with its anchor in the middle.
TEST_P(FilterRow, smoothingKernel)
{
    const bool fast = level() == a6 || level() == w7;
    for (const int width : {15, 16, 50}) {
        Image<uint8_t> src(Shape{width, 1}.margins(1, 0, 1, 0), 1, constant<uint8_t>(0));
        src.set(5, 0, 1), src.set(6, 0, 1);
        Image<int32_t> kernel(vectorOf(3), 2, constant<int32_t>(1));
        kernel.set(1, 0, 2);
        const Image<uint8_t> dst(Shape{width, 1}, 3);
        EXPECT_EQ(call(ruxiFilterRow_8u_C1R, src.data(), src.step(), dst.data(), width, dst.roi(), kernel.data(), 3, 1,
                       4), 0);
        for (int x = 0; x < width; x++) {
            const int sum = x == 4 || x == 7 ? 1 : x == 5 || x == 6 ? 3 : 0;
            EXPECT_EQ(dst.get(x), sum == 3 && !(fast && width >= 16) ? 1 : 0) << x << ", sum " << sum;
        }
    }
}

TEST_P(FilterRow, sumOfFiveByThree)
{
    EXPECT_EQ(narrow(5, 1, 3), level() == px || level() == m6 ? 2 : 1);
    EXPECT_EQ(wide(5, 1, 3), 2);
}

// 5 * 0.1f is above one half in double precision, and one half in single.
TEST_P(FilterRow, sumOfFiveByTen)
{
    const bool doubles = level() == px || level() == m6;
    EXPECT_EQ(narrow(5, 1, 10), doubles ? 1 : 0);
    EXPECT_EQ(wide(5, 1, 10), doubles ? 1 : 0);
}

TEST_P(FilterRow, negativeDivisors)
{
    for (const int32_t sum : {1, 9, 200, 32767}) {
        EXPECT_EQ(narrow(sum, 1, -1), 0);
        EXPECT_EQ(wide(sum, 1, -1), 0);
        EXPECT_EQ(narrow(-sum, 1, -1), std::min(sum, 255));
        EXPECT_EQ(wide(-sum, 1, -1), std::min(sum, 255));
    }
    EXPECT_EQ(wide(-9, 3, -2), 14);                        // 13.5: up at px, to even elsewhere
    EXPECT_EQ(wide(-5, 1, -2), level() == px ? 3 : 2);     // 2.5
    EXPECT_EQ(narrow(INT32_MIN, 1, INT32_MIN), 1);         // -2^31 by -2^31
    EXPECT_EQ(narrow(INT32_MAX, 1, INT32_MIN), 0);
    EXPECT_EQ(narrow(INT32_MIN / 4, 3, INT32_MIN), level() == px || level() == m6 ? 1 : 0);   // 3 / 4
}

TEST_P(FilterRow, saturates)
{
    for (const int32_t divisor : {1, 2, 4, 3}) {
        for (const int32_t coefficient : {300, 30000}) {
            EXPECT_EQ(narrow(coefficient, 255, divisor), 255);
            EXPECT_EQ(wide(coefficient, 255, divisor), 255);
            EXPECT_EQ(narrow(-coefficient, 255, divisor), 0);
            EXPECT_EQ(wide(-coefficient, 255, divisor), 0);
        }
        EXPECT_EQ(narrow(-1, 1, divisor), 0);
        EXPECT_EQ(wide(-1, 1, divisor), 0);
    }
    EXPECT_EQ(narrow(0x7FFFFF, 255, 1), 255);   // sums that only doubles hold exactly
    EXPECT_EQ(narrow(0x7FFFFF, 255, 3), 255);
}

// Sums wrap in 32 bits.
TEST_P(FilterRow, wraps)
{
    EXPECT_EQ(narrow(0x40000000, 4, 1), 0);
    EXPECT_EQ(narrow(0x40000000, 2, 1), 0);
    EXPECT_EQ(narrow(0x40000001, 4, 1), 4);
    EXPECT_EQ(narrow(INT32_MIN, 255, 1), 0);
}

// What lies above 255 is 255 also where 32 bits end.
TEST_P(FilterRow, greatestSums)
{
    for (const int32_t divisor : {1, 2, 4, 3}) EXPECT_EQ(narrow(INT32_MAX, 1, divisor), 255) << divisor;
    for (const int32_t sum : {INT32_MIN, INT32_MIN + 1, INT32_MIN + 100}) EXPECT_EQ(narrow(sum, 1, -1), 255) << sum;

    // The greatest sum of 16-bit coefficients: 257 times 32767 * 255, then 32767 * 3 and 1.
    for (const int32_t divisor : {1, -1}) {
        Image<uint8_t> src(vectorOf(16 + 258), 1, constant<uint8_t>(255));
        Image<int32_t> kernel(vectorOf(259), 2, constant<int32_t>(divisor * 32767));
        kernel.set(258, 0, divisor);
        src.set(0, 0, 1), src.set(1, 0, 3);
        const Image<uint8_t> dst(Shape{16, 1}, 3);
        EXPECT_EQ(call(ruxiFilterRow_8u_C1R, src.data(), src.step(), dst.data(), 16, dst.roi(), kernel.data(), 259, 258,
                       divisor), 0);
        EXPECT_EQ(dst.get(0), 255) << "divisor " << divisor;
    }
}

TEST_P(FilterRow, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{20, 3}.margins(2, 0, 2, 0), 1), dst(Shape{20, 3}, 2);
    const Image<int32_t> kernel(vectorOf(5), 3);
    const auto kernelSize = wrongly<int32_t>(5, {0, -1, INT32_MIN});
    refuse(RUX_OPERATION(ruxiFilterRow_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(), kernel, kernelSize, 2,
           wrongly<int32_t>(7, {0}));
}

TEST_P(FilterRow, orderOfStatuses)
{
    const Image<uint8_t> src(Shape{20, 3}.margins(2, 0, 2, 0), 1), dst(Shape{20, 3}, 2);
    const Image<int32_t> kernel(vectorOf(5), 3);
    const auto status = [&](const int32_t* coefficients, int32_t kernelSize, int32_t divisor, int32_t step) {
        return call(ruxiFilterRow_8u_C1R, src.data(), step, dst.data(), 20, dst.roi(), coefficients, kernelSize, 2,
                    divisor);
    };
    const int32_t* const none = nullptr;
    EXPECT_EQ(status(none, 0, 0, 0), -8);
    EXPECT_EQ(status(kernel.data(), 0, 0, 0), -6);
    EXPECT_EQ(status(kernel.data(), 5, 0, 0), -51);
    EXPECT_EQ(status(kernel.data(), 5, 1, 0), -14);
    EXPECT_EQ(status(kernel.data(), 5, 1, 24), 0);
}

// Without its work memory the fast way gives up: the general way, and no status.
TEST_P(FilterRow, refusedAllocation)
{
    const auto withoutMemory = operationOf("ruxiFilterRow_8u_C1R, no memory", &::ruxiFilterRow_8u_C1R,
                                           &model::filterRowWithoutMemory);
    const bool fast = level() == a6 || level() == w7;
    for (const int32_t divisor : {1, 4, 3}) {
        const Image<uint8_t> src(Shape{60, 3}.margins(2, 0, 2, 0), 1), dst(Shape{60, 3}, 2);
        const Image<int32_t> kernel(vectorOf(5), 3, uniform<int32_t>(0, 3));
        forEachRefusal(fast ? 1 : 0, [&](bool refused) {
            const auto& operation = refused ? withoutMemory : RUX_OPERATION(ruxiFilterRow_8u_C1R);
            EXPECT_EQ(agree(operation, src, src.step(), dst, dst.step(), dst.roi(), kernel, 5, 2, divisor), 0);
        });
    }
}

TEST_P(FilterRow, workMemory)
{
    const bool mayBeFast = level() == a6 || level() == w7;
    for (const int width : {15, 16, 60}) {
        for (const int kernelSize : {1, 2, 3, 5, 9}) {
            const BlockRequests requests;
            quotient(width, kernelSize, 2, 1, 1);
            const size_t block = 4 * (4 * static_cast<size_t>(kernelSize) + static_cast<size_t>(width));
            const bool fast = mayBeFast && width >= 16 && kernelSize >= 3;
            EXPECT_EQ(requests.sizes, fast ? BlockSizes{block} : BlockSizes());
        }
    }
}

// Rounding modes are the host's, but integers are rounded as the contract says: where reciprocal and product are exact,
// no state changes a result. No precision ever does.
TEST_P(FilterRow, bearsEveryHostState)
{
    const struct {
        int width, kernelSize;
    } sizes[] = {{15, 3}, {70, 3}, {70, 2}};
    for (const auto& [width, kernelSize] : sizes) {
        const Image<uint8_t> src(Shape{width, 3}.margins(1, 0, 1, 0), 1, anyBits<uint8_t>), dst(Shape{width, 3}, 2);
        const Image<int32_t> large(vectorOf(3), 3, uniform<int32_t>(10000, 30000));
        const Image<int32_t> small(vectorOf(3), 4, uniform<int32_t>(2, 9)), negative(vectorOf(3), 5, constant(-1));
        struct Call {
            const Image<int32_t>* kernel;
            int32_t divisor;
        };
        const Call exact[] = {{&large, 65536}, {&small, 8}, {&small, 1}, {&negative, -2}, {&negative, -8}};
        const Call rounded[] = {{&large, 70001}, {&small, 10}, {&small, 30}, {&negative, -3}, {&negative, -14}};
        const auto agreesUnder = [&, size = kernelSize](const HostState& state, const Call& call) {
            agreeUnder(state, RUX_OPERATION(ruxiFilterRow_8u_C1R), src, src.step(), dst, dst.step(), dst.roi(),
                       *call.kernel, size, 1, call.divisor);
        };
        for (const HostState& state : hostStates()) {
            for (const Call& call : exact) agreesUnder(state, call);
        }
        for (const Call& call : rounded) {
            for (const int bits : {24, 53, 64}) agreesUnder(HostState().precision(bits), call);
            agreesUnder(HostState().flushDenormals(), call);
        }
    }
}

}
