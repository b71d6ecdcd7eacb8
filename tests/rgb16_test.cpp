// YCbCr and YUV to 16-bit RGB, against the models and the contract's numbers.
#include "colour_images.h"
#include "model/rgb16.h"
#include "ruxlib.h"

namespace rux::test {

RUX_FAMILY(Rgb16, "rgb16");

static bool hasVectors(Level level)
{
    return level == a6 || level == w7;
}

// Runs an action for each of the four interleaved forms.
template <class Action>
static void eachInterleaved(const Action& action)
{
    action(RUX_OPERATION(ruxiYCbCr422ToRGB555_8u16u_C2C3R));
    action(RUX_OPERATION(ruxiYCbCr422ToRGB565_8u16u_C2C3R));
    action(RUX_OPERATION(ruxiYCbCr422ToBGR555_8u16u_C2C3R));
    action(RUX_OPERATION(ruxiYCbCr422ToBGR565_8u16u_C2C3R));
}

// Width 1 writes three bytes for each row: a destination two words wide.
template <class Op>
static void sweepInterleaved(FamilyTest& test, const Op& operation)
{
    test.sweep(operation, imageSweep(), [](Case& c, const auto& compare) {
        const auto src = c.image<uint8_t>(2);
        const auto dst = c.image<uint16_t>(Shape{std::max(c.width, 2), c.height});
        compare(src, src.step(), dst, dst.step(), c.roi());
    });
}

template <class Op>
static void sweepPlanes(FamilyTest& test, const Op& operation)
{
    test.sweep(operation, imageSweep(), [&](Case& c, const auto& compare) {
        const auto src = planesOf(c, 1);
        const auto dst = c.image<uint16_t>();
        compare(src, src.steps(), dst, dst.step(), c.roi());
    });
}

TEST_P(Rgb16, ruxiYCbCr422ToRGB555) { sweepInterleaved(*this, RUX_OPERATION(ruxiYCbCr422ToRGB555_8u16u_C2C3R)); }
TEST_P(Rgb16, ruxiYCbCr422ToRGB565) { sweepInterleaved(*this, RUX_OPERATION(ruxiYCbCr422ToRGB565_8u16u_C2C3R)); }
TEST_P(Rgb16, ruxiYCbCr422ToBGR555) { sweepInterleaved(*this, RUX_OPERATION(ruxiYCbCr422ToBGR555_8u16u_C2C3R)); }
TEST_P(Rgb16, ruxiYCbCr422ToBGR565) { sweepInterleaved(*this, RUX_OPERATION(ruxiYCbCr422ToBGR565_8u16u_C2C3R)); }
TEST_P(Rgb16, ruxiYUV420ToBGR555) { sweepPlanes(*this, RUX_OPERATION(ruxiYUV420ToBGR555_8u16u_P3C3R)); }
TEST_P(Rgb16, ruxiYUV420ToBGR565) { sweepPlanes(*this, RUX_OPERATION(ruxiYUV420ToBGR565_8u16u_P3C3R)); }

// Vectors, pairs and a lone pixel.
TEST_P(Rgb16, everyColourInterleaved)
{
    for (const bool lumaGiven : {false, true}) {
        const auto src = interleavedOfEveryColour(15, lumaGiven);
        const Image<uint16_t> dst(Shape{15, src.height()});
        eachInterleaved([&](const auto& op) { agree(op, src, src.step(), dst, dst.step(), src.roi()); });
    }
}

// Groups of four chroma columns, of two, of one, and the odd column.
TEST_P(Rgb16, everyColourInPlanes)
{
    for (const bool lumaGiven : {false, true}) {
        const auto src = planesOfEveryColour(15, 1, lumaGiven);
        const ruxiSize roi = src[0].roi();
        const Image<uint16_t> dst(Shape{roi.width, roi.height});
        agree(RUX_OPERATION(ruxiYUV420ToBGR555_8u16u_P3C3R), src, src.steps(), dst, dst.step(), roi);
        agree(RUX_OPERATION(ruxiYUV420ToBGR565_8u16u_P3C3R), src, src.steps(), dst, dst.step(), roi);
    }
}

// Strides that make one row of the image, and those beside them: the boundary between the forms moves.
TEST_P(Rgb16, contiguousAndNot)
{
    uint64_t seed = 1;
    for (int width = 1; width <= 18; width++) {
        for (int height = 1; height <= 9; height++) {
            for (const int srcMore : {0, 1, 2}) {
                for (const int dstMore : {0, 1, 2}) {
                    const Image<uint8_t> src(Shape{width, height, 2}.withStep(2 * width + srcMore), seed++);
                    const Image<uint16_t> dst(Shape{std::max(width, 2), height}.withStep(2 * width + dstMore), seed++);
                    eachInterleaved([&](const auto& op) { agree(op, src, src.step(), dst, dst.step(), src.roi()); });
                }
            }
            if (HasFailure()) return;
        }
    }
}

TEST_P(Rgb16, readsRowsThatOverlap)
{
    const ruxiSize roi{38, 9};
    const Image<uint16_t> dst(Shape{38, 9});
    for (const int step : {1, 2, 5}) {
        const Image<uint8_t> src(Shape{38, 9, 2}.withStep(step), 3);
        eachInterleaved([&](const auto& op) { agree(op, src, src.step(), dst, dst.step(), roi); });
        const Shape chroma = chromaShape(roi, 1).withStep(step);
        const Planes<uint8_t> planes(Image<uint8_t>(Shape{38, 9}.withStep(step), 1), Image<uint8_t>(chroma, 2),
                                     Image<uint8_t>(chroma.withStep(step + 1), 3));
        agree(RUX_OPERATION(ruxiYUV420ToBGR555_8u16u_P3C3R), planes, planes.steps(), dst, dst.step(), roi);
        agree(RUX_OPERATION(ruxiYUV420ToBGR565_8u16u_P3C3R), planes, planes.steps(), dst, dst.step(), roi);
    }
}

// Any positive stride is a right one: a single row needs none.
TEST_P(Rgb16, stridesOfOne)
{
    const ruxiSize roi{21, 1};
    const Image<uint8_t> src(Shape{21, 1, 2});
    const Image<uint16_t> dst(Shape{21, 1});
    const auto planes = planesOfColour(roi, 1, 100, 90, 200);
    const Steps ones{{1, 1, 1}};
    eachInterleaved([&](const auto& op) { EXPECT_EQ(agree(op, src, 1, dst, 1, roi), 0); });
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYUV420ToBGR555_8u16u_P3C3R), planes, ones, dst, 1, roi), 0);
    EXPECT_EQ(agree(RUX_OPERATION(ruxiYUV420ToBGR565_8u16u_P3C3R), planes, ones, dst, 1, roi), 0);
}

TEST_P(Rgb16, refusesWrongArguments)
{
    const ruxiSize roi{9, 5};
    const Image<uint8_t> src(Shape{9, 5, 2});
    const Image<uint16_t> dst(Shape{9, 5});
    eachInterleaved([&](const auto& op) { refuse(op, src, src.step(), dst, dst.step(), roi); });
    const auto planes = planesOfColour(roi, 1, 1, 2, 3);
    const StepsInPlace steps{planes.steps()};
    refuse(RUX_OPERATION(ruxiYUV420ToBGR555_8u16u_P3C3R), planes, steps, dst, dst.step(), roi);
    refuse(RUX_OPERATION(ruxiYUV420ToBGR565_8u16u_P3C3R), planes, steps, dst, dst.step(), roi);
}

// The array before the size, the size before the planes, the planes before the strides.
TEST_P(Rgb16, orderOfChecks)
{
    const Image<uint8_t> plane(Shape{4, 4});
    const Image<uint16_t> dst(Shape{4, 4});
    const uint8_t* const planes[3] = {plane.data(), plane.data(), nullptr};
    const uint8_t* const all[3] = {plane.data(), plane.data(), plane.data()};
    const uint8_t* const* const none = nullptr;
    const int32_t steps[3] = {4, 4, 0};
    for (const auto function : {ruxiYUV420ToBGR555_8u16u_P3C3R, ruxiYUV420ToBGR565_8u16u_P3C3R}) {
        EXPECT_EQ(call(function, none, steps, dst.data(), 0, ruxiSize{0, 4}), -8);
        EXPECT_EQ(call(function, planes, steps, dst.data(), 0, ruxiSize{0, 4}), -6);
        EXPECT_EQ(call(function, planes, steps, dst.data(), 0, ruxiSize{4, 4}), -8);
        EXPECT_EQ(call(function, all, steps, dst.data(), 8, ruxiSize{4, 4}), -14);
    }
    const uint8_t* const noImage = nullptr;
    eachInterleaved([&](const auto& op) {
        EXPECT_EQ(call(op.function, noImage, 0, dst.data(), 8, ruxiSize{4, 0}), -8);
        EXPECT_EQ(call(op.function, plane.data(), 0, dst.data(), 8, ruxiSize{4, 0}), -6);
        EXPECT_EQ(call(op.function, plane.data(), 8, dst.data(), 0, ruxiSize{2, 2}), -14);
    });
}

template <class Function>
static Image<uint16_t> decoded(Function* function, const Image<uint8_t>& src, Step dstStep)
{
    Image<uint16_t> dst(Shape{src.width(), src.height()}.withStep(dstStep), 9, constant(uint16_t(0xEEEE)));
    EXPECT_EQ(call(function, src.data(), src.step(), dst.data(), dstStep, src.roi()), 0);
    return dst;
}

TEST_P(Rgb16, referenceWhite)
{
    for (const int width : {12, 13}) {
        const auto src = interleavedOfColour({width, 3}, 235, 128, 128);
        const Step step{2 * width + 2};
        eachInterleaved([&](const auto& op) {
            const auto dst = decoded(op.function, src, step);
            const int white = std::strstr(op.name, "565") ? 0xFFFF : 0x7FFF;
            for (int x = 0; x < width; x++) EXPECT_EQ(dst.get(x, 2), white) << op.name << " " << x;
        });
    }
}

// Red 47, green 123, blue 64: four words of one colour, low bits dropped.
TEST_P(Rgb16, placeOfTheComponents)
{
    const auto src = interleavedOfColour({2, 1}, 97, 113, 99);
    const Step step{4};
    EXPECT_EQ(decoded(ruxiYCbCr422ToRGB565_8u16u_C2C3R, src, step).get(0), 8 << 11 | 30 << 5 | 5);
    EXPECT_EQ(decoded(ruxiYCbCr422ToBGR565_8u16u_C2C3R, src, step).get(0), 5 << 11 | 30 << 5 | 8);
    EXPECT_EQ(decoded(ruxiYCbCr422ToRGB555_8u16u_C2C3R, src, step).get(0), 8 << 10 | 15 << 5 | 5);
    EXPECT_EQ(decoded(ruxiYCbCr422ToBGR555_8u16u_C2C3R, src, step).get(0), 5 << 10 | 15 << 5 | 8);
}

// A colour that tells the forms apart: 0x43C5 in pairs, 0x3BC5 in vectors, 0x43C6 in a lone pixel at a6 and w7.
static constexpr int inPair = 0x43C5, inVector = 0x3BC5, inLone = 0x43C6;

static std::vector<int> forms(ruxiSize size, int srcMore, int dstMore)
{
    const auto tight = interleavedOfColour(size, 97, 113, 99);
    Image<uint8_t> src(Shape{size.width, size.height, 2}.withStep(2 * size.width + srcMore));
    for (int y = 0; y < size.height; y++) std::memcpy(src.row(y), tight.row(y), tight.rowBytes());
    const Step dstStep{2 * size.width + dstMore};
    const auto dst = decoded(ruxiYCbCr422ToRGB565_8u16u_C2C3R, src, dstStep);
    std::vector<int> words;
    for (int y = 0; y < size.height; y++) {
        for (int x = 0; x < size.width; x++) {
            uint16_t word;
            std::memcpy(&word, dst.row(0) + (y * (dstStep / 2) + x) * 2, sizeof word);
            words.push_back(word);
        }
    }
    return words;
}

TEST_P(Rgb16, tightImageIsOneRow)
{
    const std::vector<int> pairs(24, inPair), vectors(24, inVector);
    for (const int dstMore : {0, 1}) EXPECT_EQ(forms({6, 4}, 0, dstMore), hasVectors(level()) ? vectors : pairs);
    const auto apart = forms({6, 4}, 1, 0);
    EXPECT_EQ(apart, forms({6, 4}, 0, 2));
    for (int i = 0; i < 24; i++) EXPECT_EQ(apart[i], level() == a6 && i % 6 < 4 ? inVector : inPair);
}

// 30 pixels: 24 in the first kernel call, 6 in the second, where a6 finds one more vector.
TEST_P(Rgb16, restOfATightImage)
{
    const auto words = forms({6, 5}, 0, 0);
    const int vectors = level() == a6 ? 28 : level() == w7 ? 24 : 0;
    for (int i = 0; i < 30; i++) EXPECT_EQ(words[i], i < vectors ? inVector : inPair) << i;
}

TEST_P(Rgb16, loneLastPixel)
{
    const auto words = forms({15, 2}, 0, 0);
    const int vectors = level() == a6 ? 12 : level() == w7 ? 8 : 0;
    for (int i = 0; i < 30; i++) {
        const int x = i % 15, last = hasVectors(level()) ? inLone : inPair;
        EXPECT_EQ(words[i], x < vectors ? inVector : x < 14 ? inPair : last) << i;
    }
}

TEST_P(Rgb16, oddStepLosesItsLowBit)
{
    const auto src = interleavedOfColour({3, 2}, 235, 128, 128);
    eachInterleaved([&](const auto& op) {
        const auto dst = decoded(op.function, src, Step{1001});
        const uint16_t white = dst.get(0);
        for (int x = 0; x < 3; x++) {
            uint16_t second;
            std::memcpy(&second, dst.row(0) + 2 * (500 + x), sizeof second);
            EXPECT_EQ(second, white);
        }
    });
}

// Three bytes R, G, B a row, half of dstStep apart; no word. A step of 1 leaves the last row alone, one of 2 or 4
// lets each row write over those before it. Source and destination end, or begin, at a faulting page.
TEST_P(Rgb16, widthOneWritesBytes)
{
    for (const Edge edge : {Edge::start, Edge::end}) {
        for (const int dstStep : {1, 2, 3, 4, 5, 6, 7, 21}) {
            const int apart = dstStep / 2, bytes = 4 * apart + 3;
            const Image<uint8_t> src(Shape{1, 5, 2}.withStep(7).at({edge}), 5);
            eachInterleaved([&](const auto& op) {
                const Image<uint8_t> dst(vectorOf(bytes).at({edge}), 6);
                const auto expected = dst.clone();
                const auto words = [](const auto& image) { return reinterpret_cast<uint16_t*>(image.data()); };
                EXPECT_EQ(call(op.function, src.data(), 7, words(dst), dstStep, src.roi()), 0);
                EXPECT_EQ(op.model(level(), src.data(), 7, words(expected), dstStep, src.roi()), 0);
                EXPECT_TRUE(dst.equals(expected)) << op.name << " " << dstStep;
            });
        }
    }
    const auto src = interleavedOfColour({1, 1}, 100, 150, 0);
    Image<uint8_t> dst(vectorOf(3));
    auto* const word = reinterpret_cast<uint16_t*>(dst.data());
    EXPECT_EQ(call(ruxiYCbCr422ToBGR555_8u16u_C2C3R, src.data(), 2, word, 2, src.roi()), 0);
    EXPECT_EQ(dst.get(0), 132);
    EXPECT_EQ(dst.get(1), 71);
    EXPECT_EQ(dst.get(2), 142);
}

// The 4:2:0 forms need no special way there: the odd column and its chroma column 0.
TEST_P(Rgb16, widthOneInPlanes)
{
    const auto src = planesOfColour({1, 3}, 1, 100, 0, 146);
    const auto steps = src.steps();
    const Image<uint16_t> dst(Shape{1, 3});
    EXPECT_EQ(call(ruxiYUV420ToBGR565_8u16u_P3C3R, src.data(), steps.bytes.data(), dst.data(), 2, ruxiSize{1, 3}), 0);
    for (int y = 0; y < 3; y++) EXPECT_EQ(dst.get(0, y), 0x7C40);
}

TEST_P(Rgb16, formsInPlanes)
{
    const auto src = planesOfColour({15, 3}, 1, 100, 0, 146);
    const auto steps = src.steps();
    const Image<uint16_t> dst(Shape{15, 3});
    EXPECT_EQ(call(ruxiYUV420ToBGR565_8u16u_P3C3R, src.data(), steps.bytes.data(), dst.data(), 30, ruxiSize{15, 3}), 0);
    for (int y = 0; y < 3; y++) {
        for (int x = 0; x < 15; x++) {
            const bool vector = hasVectors(level()) && x < 14 && y < 2;
            EXPECT_EQ(dst.get(x, y), vector ? 0x7C60 : 0x7C40) << x << ", " << y;
        }
    }
}

}
