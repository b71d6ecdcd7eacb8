// Scaling: every kernel against the model over sizes, factors and rectangles, the statuses, what a refused allocation
// leaves behind.
#include "model/resize.h"

#include <cmath>
#include <limits>

#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

RUX_FAMILY(Resize, "resize");

static const double nan = std::numeric_limits<double>::quiet_NaN();
static const double infinity = std::numeric_limits<double>::infinity();

// Whole ratios, odd ones, some beside 1, some of any kind.
static double factorFor(Random& random)
{
    static constexpr double few[] = {1.0, 2.0, 3.0, 0.5, 0.25, 1.0 / 3, 0.1, 1.5, 0.55, 2.0 / 3, 1.25,
                                     1.0001, 0.9999, 1 + 1e-9, 1.875, 0.9, 0.07, 4.7};
    if (random.oneIn(3)) return 0.05 + random.below(1 << 20) / 300000.0;
    return few[random.below(sizeof few / sizeof *few)];
}

// Reductions; reciprocals just below a whole number, runs of many elements.
static double reductionFor(Random& random)
{
    static constexpr double few[] = {0.5, 0.25, 0.2, 0.125, 0.1, 1.0 / 3, 0.04, 0.4, 0.55, 2.0 / 3, 0.9, 0.99,
                                     0.33333334, 0.50000001, 0.3, 0.07, 0.0578, 0.0213, 0.11, 0.9999999, 1 - 1e-9};
    if (random.oneIn(3)) return (random.below(1 << 20) + 20000) / 1100000.0;
    return few[random.below(sizeof few / sizeof *few)];
}

// A rectangle's place on an axis of the image; it may go past the image's end.
struct Span {
    int32_t begin, length, ofImage, inImage;
};

static Span spanFor(Random& random, int length, int atLeast)
{
    const int before = random.oneIn(2) ? 0 : random.between(1, 5);
    int after = random.oneIn(2) ? 0 : random.between(1, 5);
    if (!random.oneIn(6)) after += std::max(0, atLeast - before - length - after);
    const int over = after == 0 && random.oneIn(3) ? random.between(1, 9) : 0;
    return {before, length + over, before + length + after, length};
}

// A region as large as the result, larger, or smaller.
static int32_t regionFor(Random& random, int length, double factor)
{
    const int produced = std::max(1, static_cast<int>(length * factor + 1e-07));
    if (random.oneIn(3)) return produced + random.between(1, 5);
    return random.oneIn(3) ? random.between(1, produced) : produced;
}

// The rows that a column of boxes covers, also past the image.
static int rowsCovered(int boxes, double factor)
{
    const double scale = 1.0 / factor;
    const int first = static_cast<int>(std::ceil(scale));
    return std::max(first, static_cast<int>(std::ceil(boxes * scale - 1e-7)));
}

template <class Compare>
static void scalingCase(Case& c, ruxInterpolation mode, const Compare& compare)
{
    const bool superSample = mode == ruxInterpolationSuperSample;
    const Span x = spanFor(c.random, c.width, 4);
    const Span y = spanFor(c.random, c.height, 4);
    double xFactor = superSample ? reductionFor(c.random) : factorFor(c.random);
    const double yFactor = superSample ? reductionFor(c.random) : factorFor(c.random);
    if (c.width * xFactor > 1100) xFactor = 1.1;
    const ruxiSize region = {regionFor(c.random, x.inImage, xFactor), regionFor(c.random, y.inImage, yFactor)};
    int rows = y.ofImage;
    if (superSample) {
        const int boxes = std::min(region.height, std::max(1, static_cast<int>(y.inImage * yFactor + 1e-07)));
        rows = std::max(rows, y.begin + rowsCovered(boxes, yFactor));
    }
    const auto src = c.image<uint8_t>(Shape{x.ofImage, rows});
    const auto dst = c.image<uint8_t>(Shape{region.width, region.height});
    compare(src, ruxiSize{x.ofImage, y.ofImage}, src.step(), ruxiRect{x.begin, y.begin, x.length, y.length}, dst,
            dst.step(), region, xFactor, yFactor, mode);
}

TEST_P(Resize, nearest)
{
    sweep(RUX_OPERATION(ruxiResize_8u_C1R), imageSweep().repeated(3).labelled(":nearest"),
          [](Case& c, const auto& compare) { scalingCase(c, ruxInterpolationNearest, compare); });
}

TEST_P(Resize, linear)
{
    sweep(RUX_OPERATION(ruxiResize_8u_C1R), imageSweep().repeated(3).labelled(":linear"),
          [](Case& c, const auto& compare) { scalingCase(c, ruxInterpolationLinear, compare); });
}

TEST_P(Resize, cubic)
{
    sweep(RUX_OPERATION(ruxiResize_8u_C1R), imageSweep().repeated(3).labelled(":cubic"),
          [](Case& c, const auto& compare) { scalingCase(c, ruxInterpolationCubic, compare); });
}

TEST_P(Resize, superSample)
{
    sweep(RUX_OPERATION(ruxiResize_8u_C1R),
          imageSweep().repeated(3).heightsOf({1, 2, 5, 9, 16, 33, 3, 12, 1, 64}).labelled(":superSample"),
          [](Case& c, const auto& compare) { scalingCase(c, ruxInterpolationSuperSample, compare); });
}

// Every small image, so that each downgrade and each edge of a stencil meets each other.
TEST_P(Resize, everySmallSize)
{
    const Image<uint8_t> src(Shape{6, 6}.withStep(9), 5);
    const Image<uint8_t> dst(Shape{9, 9}, 6);
    for (int width = 1; width <= 6; width++) {
        for (int height = 1; height <= 6; height++) {
            for (int x = 0; x < width; x++) {
                for (const ruxInterpolation mode : {1, 2, 4}) {
                    agree(RUX_OPERATION(ruxiResize_8u_C1R), src, ruxiSize{width, height}, src.step(),
                          ruxiRect{x, height - 1 - x % height, 7, 7}, dst, dst.step(), dst.roi(), 1.5, 1.4, mode);
                    agree(RUX_OPERATION(ruxiResize_8u_C1R), src, ruxiSize{width, height}, src.step(),
                          ruxiRect{x, x % height, 2, 3}, dst, dst.step(), dst.roi(), 1.0, 2.0, mode);
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST_P(Resize, rowsThatOverlap)
{
    const Image<uint8_t> src(Shape{40, 5}, 7);
    const Image<uint8_t> dst(Shape{60, 8}, 8);
    for (const int32_t step : {1, 2, 7}) {
        for (const ruxInterpolation mode : {1, 2, 4}) {
            agree(RUX_OPERATION(ruxiResize_8u_C1R), src, ruxiSize{40, 5}, step, ruxiRect{1, 0, 38, 5}, dst,
                  dst.step(), dst.roi(), 1.5, 1.6, mode);
        }
        agree(RUX_OPERATION(ruxiResize_8u_C1R), src, ruxiSize{40, 5}, step, ruxiRect{1, 0, 38, 5}, dst, dst.step(),
              dst.roi(), 0.4, 0.4, ruxInterpolation(8));
    }
}

TEST_P(Resize, largeReductions)
{
    const Image<uint8_t> src(Shape{700, 300}, 9);
    const Image<uint8_t> dst(Shape{40, 12}, 10);
    for (const double xFactor : {1.0 / 64, 1.0 / 65.5, 0.0501, 0.003}) {
        for (const double yFactor : {1.0 / 32, 0.0377}) {
            for (const ruxInterpolation mode : {1, 2, 4, 8}) {
                agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{3, 2, 697, 298}, dst,
                      dst.step(), dst.roi(), xFactor, yFactor, mode);
            }
        }
    }
}

// Positions are sums of steps: far from the start their rounding shows.
TEST_P(Resize, longRows)
{
    const Image<uint8_t> src(Shape{150011, 3}, 17, anyBits<uint8_t>);
    const Image<uint8_t> dst(Shape{210000, 2}, 18);
    for (const double factor : {1.37, 0.77, 1.2345}) {
        for (const ruxInterpolation mode : {1, 2, 4, 8}) {
            agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{0, 0, 150011, 3}, dst,
                  dst.step(), dst.roi(), factor, 0.81, mode);
        }
    }
}

// The step is a length times a reciprocal; a quotient would give another pixel, with the first factor at px, with the
// second at the other levels.
TEST_P(Resize, stepByReciprocal)
{
    constexpr int width = 1000001;
    const Image<uint8_t> src(Shape{width, 2}, 1, [](Random&, uint8_t* row, int count) {
        for (int x = 0; x < count; x++) row[x] = x % 2 ? 255 : 0;
    });
    const Image<uint8_t> dst(Shape{2, 2}, 2);
    for (const double factor : {2.5137334872495573e-06, 2.1155773896408035e-06}) {
        agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{0, 0, width, 2}, dst, dst.step(),
              dst.roi(), factor, 1.0, ruxInterpolation(2));
    }
}

// Enough pixels that the last bit of each step of the cubic decides some of them, in blocks of four and behind them.
TEST_P(Resize, cubicOfManyPixels)
{
    const auto agrees = [&](uint64_t seed, ruxiSize from, double yFactor, ruxiSize region) {
        const Image<uint8_t> src(Shape{from.width, from.height}, seed, anyBits<uint8_t>);
        const Image<uint8_t> dst(Shape{region.width, region.height}, 20);
        agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{0, 0, from.width, from.height},
              dst, dst.step(), region, 1.251, yFactor, ruxInterpolation(4));
    };
    agrees(19, {801, 403}, 1.497, {1002, 603});
    for (uint64_t seed = 1; seed <= 20; seed++) agrees(seed, {4, 4}, 5000.7, {3, 20002});
}

// What 32 bits do not hold becomes 0x80000000, and so one pixel.
TEST_P(Resize, factorsWithoutBounds)
{
    const Image<uint8_t> src(Shape{9, 9}, 11);
    const Image<uint8_t> dst(Shape{5, 5}, 12);
    for (const double factor : {1e9, 2.4e8, 1e10, 1e300, infinity, 1e-10, 1e-300, 5e-324}) {
        for (const ruxInterpolation mode : {1, 2, 4}) {
            agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{0, 0, 9, 9}, dst, dst.step(),
                  dst.roi(), factor, 1.0, mode);
            agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{1, 2, 9, 9}, dst, dst.step(),
                  dst.roi(), 1.5, factor, mode);
        }
    }
}

// The rectangle's end is a 32-bit sum: one that wraps is not past the image, and the length stays as it is.
TEST_P(Resize, endOfRectangleWraps)
{
    const Image<uint8_t> src(Shape{9, 9}, 13);
    const Image<uint8_t> dst(Shape{5, 5}, 14);
    for (const ruxInterpolation mode : {1, 2, 4}) {
        agree(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), ruxiRect{1, 1, INT32_MAX, INT32_MAX}, dst,
              dst.step(), dst.roi(), 1.0, 1.0, mode);
    }
}

TEST_P(Resize, precisionOfTheHost)
{
    const Image<uint8_t> src(Shape{67, 31}, 15);
    const Image<uint8_t> dst(Shape{90, 40}, 16);
    for (const int bits : {24, 53, 64}) {
        for (const ruxInterpolation mode : {1, 2, 4, 8}) {
            const double factor = mode == 8 ? 0.371 : 1.29;
            agreeUnder(HostState().precision(bits), RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(),
                       ruxiRect{0, 0, 67, 31}, dst, dst.step(), dst.roi(), factor, factor * 0.9, mode);
        }
    }
}

static auto wrongRectangles(ruxiRect right, ruxiSize image)
{
    const auto [x, y, width, height] = right;
    return wrongly<ruxiRect>(right, {{-1, y, width, height}, {x, -1, width, height}, {x, y, 0, height},
                                     {x, y, width, 0}, {x, y, width, INT32_MIN}, {image.width, y, width, height},
                                     {x, image.height, width, height}, {INT32_MAX, y, width, height}});
}

TEST_P(Resize, refusesWrongArguments)
{
    const Image<uint8_t> src(Shape{9, 7}, 1), dst(Shape{12, 11}, 2);
    const auto rectangle = wrongRectangles({1, 1, 7, 5}, {9, 7});
    const auto factor = wrongly<double>(1.5, {0.0, -0.0, -1.5, nan, -infinity});
    for (const ruxInterpolation right : {1, 2, 4}) {
        refuse(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), rectangle, dst, dst.step(), dst.roi(),
               factor, factor, wrongly<ruxInterpolation>(right, {0, 3, 5, 6, 7, 8, 9, 16, -1, INT32_MIN}));
    }
    refuse(RUX_OPERATION(ruxiResize_8u_C1R), src, src.roi(), src.step(), rectangle, dst, dst.step(), dst.roi(), 0.5,
           0.4, ruxInterpolation(8));
}

// One call on a 9x7 image, with much of it wrong.
struct Wrong {
    ruxiSize srcSize = {9, 7};
    int32_t srcStep = 9;
    ruxiRect srcRoi = {0, 0, 9, 7};
    double xFactor = 1.5, yFactor = 1.5;
    ruxInterpolation mode = 1;
    ruxiSize region = {4, 4};
    bool null = false;

    ruxStatus status() const
    {
        const Image<uint8_t> src(Shape{9, 7}, 1), dst(Shape{4, 4}, 2);
        const auto before = dst.clone();
        const ruxStatus result = call(ruxiResize_8u_C1R, src.data(), srcSize, srcStep, srcRoi,
                                      null ? nullptr : dst.data(), 4, region, xFactor, yFactor, mode);
        EXPECT_TRUE(dst.equals(before)) << "a refused call wrote";
        return result;
    }
};

TEST_P(Resize, orderOfStatuses)
{
    for (const ruxInterpolation mode : {3, 8}) {
        Wrong call = {{0, 7}, 0, {9, -1, 9, 7}, mode == 8 ? 0.5 : 0.0, mode == 8 ? 0.5 : 0.0, mode, {4, 4}, true};
        EXPECT_EQ(call.status(), -8);
        call.null = false;
        EXPECT_EQ(call.status(), -6);
        call.srcSize = {9, 7};
        EXPECT_EQ(call.status(), -14);
        call.srcStep = 9;
        EXPECT_EQ(call.status(), -6);
        call.srcRoi.y = 0;
        EXPECT_EQ(call.status(), 1);
        call.region.height = 0;
        EXPECT_EQ(call.status(), -6);
        if (mode == 8) continue;
        call.region.height = 4, call.srcRoi.x = 0;
        EXPECT_EQ(call.status(), -23);
        call.xFactor = 1.5;
        EXPECT_EQ(call.status(), -23);
        call.yFactor = 0.3;
        EXPECT_EQ(call.status(), -22);
    }
}

TEST_P(Resize, superSamplingWantsTwoReductions)
{
    Wrong call;
    call.mode = 8, call.xFactor = 1.0, call.yFactor = 0.5;
    EXPECT_EQ(call.status(), -22);
    call.xFactor = 0.0, call.yFactor = 1.0;
    EXPECT_EQ(call.status(), -23);
    call.xFactor = nan;
    EXPECT_EQ(call.status(), -23);
    if (level() == w7) return;
    call.yFactor = 0.5;
    EXPECT_EQ(call.status(), -23);
}

// Blocks that are never released, as the library has them, end with the test.
class Blocks : public StandInAllocator {
public:
    ~Blocks() override
    {
        for (void* block : all) std::free(block);
    }
    void* allocate(size_t bytes) override
    {
        largest = std::max(largest, bytes);
        all.push_back(std::malloc(bytes));
        return all.back();
    }
    void release(void* block) override
    {
        all.erase(std::find(all.begin(), all.end(), block));
        std::free(block);
    }
    size_t largest = 0;

private:
    std::vector<void*> all;
};

// Such a factor is not for this mode: there is no promise but that nothing else is touched and that it ends.
TEST_P(Resize, superSamplingByNoFactor)
{
    const Blocks blocks;
    const Image<uint8_t> src(Shape{9, 7}, 1), dst(Shape{4, 4}.withStep(6), 2);
    const auto before = dst.clone();
    for (const double wrong : {0.0, -0.0, -0.5, -1.0, -3.7, -1e300, -infinity, nan, -1e-9}) {
        for (const double other : {0.5, 0.3, wrong}) {
            call(ruxiResize_8u_C1R, src.data(), src.roi(), 9, ruxiRect{0, 0, 9, 7}, dst.data(), 6, dst.roi(), wrong,
                 other, 8);
            call(ruxiResize_8u_C1R, src.data(), src.roi(), 9, ruxiRect{0, 0, 9, 7}, dst.data(), 6, dst.roi(), other,
                 wrong, 8);
            EXPECT_EQ(outstandingBlocks(), 0);
            EXPECT_EQ(call(ruxiResize_8u_C1R, src.data(), src.roi(), 9, ruxiRect{9, 0, 9, 7}, dst.data(), 6, dst.roi(),
                           wrong, other, 8), 1);
        }
    }
    for (int y = 0; y < 4; y++) {
        for (int x = 4; x < (y < 3 ? 6 : 4); x++) EXPECT_EQ(dst.row(y)[x], before.row(y)[x]);
    }
    EXPECT_LT(blocks.largest, 1u << 20);
}

// Tables that cannot be had leave nothing behind; where a row buffer cannot be had, the four tables are not released.
TEST_P(Resize, refusedAllocations)
{
    struct {
        ruxInterpolation mode;
        int tables, buffers;
    } const kinds[] = {{1, 2, 0}, {2, 4, 2}, {4, 4, 4}, {8, 1, 0}};
    const Blocks blocks;
    const Image<uint8_t> src(Shape{20, 12}, 1), dst(Shape{10, 6}, 2);
    const auto before = dst.clone();
    for (const auto& kind : kinds) {
        int number = 0;
        forEachRefusal(kind.tables + kind.buffers, [&](bool refused) {
            const double factor = kind.mode == 8 ? 0.4 : 0.5;
            const Image<uint8_t> to = dst.clone();
            const ruxStatus status = call(ruxiResize_8u_C1R, src.data(), src.roi(), 20, ruxiRect{0, 0, 20, 12},
                                          to.data(), 10, to.roi(), factor, factor, kind.mode);
            EXPECT_EQ(status, refused ? -9 : 0);
            if (refused) {
                EXPECT_TRUE(to.equals(before));
            }
            EXPECT_EQ(outstandingBlocks(), number > kind.tables ? 4 : 0) << kind.mode << ", allocation " << number;
            if (number++ > 0) forgetBlocks();
        });
        forgetBlocks();
    }
}

}
