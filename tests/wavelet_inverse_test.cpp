// The inverse wavelet transform, against the model and the contract's numbers.
#include "wavelet_filters.h"

namespace rux::test {

RUX_FAMILY(WaveletInverse, "wavelet_inverse");

// What is read of a band, whose rows and columns are filtered by one of the filters each.
static Shape bandShape(const WaveletFilter& vertical, const WaveletFilter& horizontal, ruxiSize size)
{
    const model::Borders rows = model::synthesisBorders(vertical), columns = model::synthesisBorders(horizontal);
    return Shape{size.width, size.height}.margins(columns.left, rows.left, columns.right, rows.right);
}

struct Subbands {
    Subbands(Case& c, const FilterPair& pair)
        : lowLow(c.image<float>(bandShape(pair.low, pair.low, c.roi()), waveletSamples)),
          highLow(c.image<float>(bandShape(pair.high, pair.low, c.roi()), waveletSamples)),
          lowHigh(c.image<float>(bandShape(pair.low, pair.high, c.roi()), waveletSamples)),
          highHigh(c.image<float>(bandShape(pair.high, pair.high, c.roi()), waveletSamples))
    {
    }
    Subbands(ruxiSize size, const FilterPair& pair, void (*fill)(Random&, float*, int) = waveletSamples)
        : lowLow(bandShape(pair.low, pair.low, size), 1, fill), highLow(bandShape(pair.high, pair.low, size), 2, fill),
          lowHigh(bandShape(pair.low, pair.high, size), 3, fill),
          highHigh(bandShape(pair.high, pair.high, size), 4, fill)
    {
    }
    ruxStatus transform(const Image<float>& dst, const Inverse& inverse, const HostState& host = HostState()) const
    {
        return callUnder(host, ruxiWTInv_32f_C1R, lowLow.data(), lowLow.step(), highLow.data(), highLow.step(),
                         lowHigh.data(), lowHigh.step(), highHigh.data(), highHigh.step(), lowLow.roi(), dst.data(),
                         dst.step(), inverse.spec, inverse.work());
    }
    model::Bands bands() const
    {
        return {{lowLow.data(), lowLow.step()}, {highLow.data(), highLow.step()}, {lowHigh.data(), lowHigh.step()},
                {highHigh.data(), highHigh.step()}};
    }

    Image<float> lowLow, highLow, lowHigh, highHigh;
};

static void expectTransform(Level level, const FilterPair& pair, const Subbands& src, const Image<float>& dst,
                            int misalignment, const HostState& host = HostState())
{
    const Inverse inverse(pair, misalignment);
    const auto before = dst.clone();
    const Image<float> sources[4] = {src.lowLow.clone(), src.highLow.clone(), src.lowHigh.clone(),
                                     src.highHigh.clone()};
    ASSERT_EQ(src.transform(dst, inverse, host), 0);
    ASSERT_TRUE(src.lowLow.equals(sources[0]) && src.highLow.equals(sources[1]) && src.lowHigh.equals(sources[2]) &&
                src.highHigh.equals(sources[3]));
    const model::Plane image = model::inverseImage(level, pair, src.bands(), src.lowLow.roi(), dst.data(), dst.step());
    expectPlane(dst, before, image, "dst");
}

TEST_P(WaveletInverse, ruxiWTInv_32f_C1R)
{
    Digest digest;
    for (Case& c : casesOf(waveletSweep())) {
        const Note note([&] { return c.describe(); });
        const FilterPair pair = randomPair(c.random);
        const int misalignment = c.random.between(0, 15);
        const Subbands src(c, pair);
        const auto dst = c.image<float>(Shape{2 * c.width, 2 * c.height});
        expectTransform(level(), pair, src, dst, misalignment);
        if (c.isGolden()) digest.addRegion(dst);
        if (HasFailure()) return;
    }
    expectGolden("wavelet_inverse", "ruxiWTInv_32f_C1R", level(), digest);
}

TEST_P(WaveletInverse, everyPlaceOfTheDestination)
{
    Random random(78);
    for (const int width : {1, 2, 3, 4, 5, 8, 256, 257}) {
        for (int place = 0; place < 16; place += width > 13 ? 4 : 1) {
            const FilterPair pair = randomPair(random);
            const Subbands src({width, 1}, pair);
            const Image<float> dst(Shape{2 * width, 2}.at({Edge::start, place}));
            expectTransform(level(), pair, src, dst, place);
            if (HasFailure()) return;
        }
    }
}

// Filters of two taps, the high ones 0: plain upsampling, by an anchor of either parity.
TEST_P(WaveletInverse, filtersOfTwoTaps)
{
    for (const int anchor : {0, 1}) {
        FilterPair pair;
        pair.low = {{2, 3}, anchor};
        pair.high = {{0, 0}, 0};
        const Subbands src({5, 1}, pair);
        const Image<float> dst(Shape{10, 2});
        ASSERT_EQ(src.transform(dst, Inverse(pair)), 0);
        for (int j = 0; j < 5; j++) {
            // The column pass has multiplied by tap 0 or 1 before: row 0 of the result.
            const float here = src.lowLow.get(j) * (anchor ? 3 : 2);
            if (anchor == 0) {
                EXPECT_FLOAT_EQ(dst.get(2 * j), 2 * here);
                EXPECT_FLOAT_EQ(dst.get(2 * j + 1), 3 * here);
            } else {
                EXPECT_FLOAT_EQ(dst.get(2 * j), 3 * here);
                EXPECT_FLOAT_EQ(dst.get(2 * j + 1), 2 * (src.lowLow.get(j + 1) * 3));
            }
        }
    }
}

TEST_P(WaveletInverse, cancellingSums)
{
    Random random(80);
    for (int i = 0; i < 500; i++) {
        const FilterPair pair = cancellingPair(random);
        const ruxiSize size = {random.between(1, 9), 1};
        const Subbands src(size, pair, cancellingSamples);
        const Image<float> dst(Shape{2 * size.width, 2}.at({Edge::start, 4 * random.between(0, 3)}));
        const int precisions[] = {24, 53, 64};
        expectTransform(level(), pair, src, dst, 0, HostState().precision(precisions[i % 3]));
        if (HasFailure()) return;
    }
}

// The low part of a row is written before the columns of the high part are read: here from the first row of dst.
TEST_P(WaveletInverse, bandInPlaceOfTheResult)
{
    FilterPair pair;
    pair.low = {{1, 1}, 0};
    pair.high = {{1, -1}, 0};
    const Inverse inverse(pair);
    Image<float> low(Shape{2, 1}), none(Shape{2, 1}), dst(Shape{4, 2});
    for (int x = 0; x < 2; x++) low.set(x, 0, static_cast<float>(x + 1)), none.set(x, 0, 0), dst.set(x, 0, 10);
    const float *const lowLow = low.data(), *const nothing = none.data(), *const lowHigh = dst.data();
    ASSERT_EQ(call(ruxiWTInv_32f_C1R, lowLow, 8, nothing, 8, lowHigh, 8, nothing, 8, ruxiSize{2, 1}, dst.data(),
                   dst.step(), static_cast<const ruxWTInvSpec*>(inverse.spec), inverse.work()), 0);
    const float expected[8] = {2, 0, 3, 1, 3, -1, 2, 2};
    for (int i = 0; i < 8; i++) EXPECT_EQ(dst.get(i % 4, i / 4), expected[i]) << i;
}

// The fields that the contract lays out.
struct Object {
    int32_t magic;
    void* lowFilter;
    void* highFilter;
    int32_t lowBufferLength, highBufferLength, lowBufferBytes;
};

struct Filter {
    void *phaseForEvenRows, *phaseForOddRows, *rowFilter;
    int32_t anchor, leftBorder, rightBorder, rowStart;
};

struct Phase {
    void* taps;
    int32_t phaseAnchor, phaseBelow;
};

struct Taps {
    float* taps;
    int32_t count;
};

struct RowTaps {
    int32_t count;
    float *taps, *even;
    int32_t evenCount;
    float* odd;
    int32_t oddCount;
};

TEST_P(WaveletInverse, bordersAndSizes)
{
    const struct { int length, anchor, left, right, rowStart; } numbers[] = {
        {2, 0, 0, 0, 0}, {2, 1, 0, 1, 0}, {3, 1, 0, 1, 0}, {3, 2, 0, 1, 1}, {5, 0, 2, 0, 2}, {9, 4, 2, 2, 4},
        {7, 3, 1, 2, 2}};
    for (const auto& n : numbers) {
        FilterPair pair;
        pair.low = {std::vector<float>(static_cast<size_t>(n.length), 0.5f), n.anchor};
        pair.high = {{0.5f, 0.5f}, 1};
        const Inverse inverse(pair);
        const auto object = model::load<Object>(inverse.spec);
        const auto filter = model::load<Filter>(object.lowFilter);
        const int length = n.left + n.right + 256;
        EXPECT_EQ(object.magic, 47);
        EXPECT_EQ(filter.anchor, n.anchor);
        EXPECT_EQ(filter.leftBorder, n.left);
        EXPECT_EQ(filter.rightBorder, n.right);
        EXPECT_EQ(filter.rowStart, n.rowStart);
        EXPECT_EQ(object.lowBufferLength, length);
        EXPECT_EQ(object.highBufferLength, 257);
        EXPECT_EQ(object.lowBufferBytes, (4 * length + 31) / 32 * 32);
        EXPECT_EQ(inverse.bytes, object.lowBufferBytes + 4 * 257);
    }
}

TEST_P(WaveletInverse, creationRefusesWrongArguments)
{
    expectCreationToRefuse<ruxWTInvSpec>(ruxiWTInvInitAlloc_32f_C1R);
}

TEST_P(WaveletInverse, creationOutOfMemory)
{
    expectCreationWithoutMemory<ruxWTInvSpec>(ruxiWTInvInitAlloc_32f_C1R, ruxiWTInvFree_32f_C1R);
}

static FilterPair smallPair()
{
    FilterPair pair;
    pair.low = pair.high = {{0.5f, 0.5f}, 1};
    return pair;
}

// The transform with all arguments right but those that an action has changed.
struct Arguments {
    explicit Arguments(const Inverse& inverse) : spec(inverse.spec), buffer(inverse.work()) {}

    ruxStatus run() const
    {
        return call(ruxiWTInv_32f_C1R, bands[0], steps[0], bands[1], steps[1], bands[2], steps[2], bands[3], steps[3],
                    size, dst, steps[4], spec, buffer);
    }

    Subbands src{{2, 2}, smallPair()};
    Image<float> image{Shape{4, 4}, 9};
    const float* bands[4] = {src.lowLow.data(), src.highLow.data(), src.lowHigh.data(), src.highHigh.data()};
    float* dst = image.data();
    int32_t steps[5] = {src.lowLow.step(), src.highLow.step(), src.lowHigh.step(), src.highHigh.step(), 16};
    ruxiSize size = {2, 2};
    const ruxWTInvSpec* spec;
    uint8_t* buffer;
};

TEST_P(WaveletInverse, transformRefusesWrongArguments)
{
    const Inverse inverse(smallPair());
    const auto status = [&](const std::function<void(Arguments&)>& change) {
        Arguments arguments(inverse);
        change(arguments);
        const ruxStatus result = arguments.run();
        EXPECT_EQ(static_cast<bool>(arguments.image.equals(Image<float>(Shape{4, 4}, 9))), result != 0);
        return result;
    };
    EXPECT_EQ(status([](Arguments&) {}), 0);
    EXPECT_EQ(status([](Arguments& a) { a.spec = nullptr, a.size = {0, 0}; }), ruxStatusNullPointer);
    EXPECT_EQ(status([](Arguments& a) { a.buffer = nullptr, a.size = {0, 0}; }), ruxStatusNullPointer);
    EXPECT_EQ(status([](Arguments& a) { a.dst = nullptr, a.size = {0, 0}; }), ruxStatusNullPointer);
    for (int i = 0; i < 4; i++) {
        EXPECT_EQ(status([=](Arguments& a) { a.bands[i] = nullptr, a.size = {0, 0}; }), ruxStatusNullPointer);
    }
    for (const ruxiSize size : {ruxiSize{0, 2}, ruxiSize{2, 0}, ruxiSize{-1, 2}, ruxiSize{2, INT_MIN}}) {
        EXPECT_EQ(status([=](Arguments& a) { a.size = size, a.steps[0] = 0; }), ruxStatusSizeError);
    }
    for (int i = 0; i < 5; i++) {
        for (const int32_t step : {0, -8, INT_MIN}) {
            EXPECT_EQ(status([=](Arguments& a) { a.steps[i] = step; }), ruxStatusStepError);
        }
    }
}

// Another tag, and parts that are not there: refused before the planes, but after the buffer; nothing is released.
TEST_P(WaveletInverse, unsoundObjects)
{
    const Inverse inverse(smallPair());
    const auto object = model::load<Object>(inverse.spec);
    const auto filter = model::load<Filter>(object.lowFilter);
    const auto phase = model::load<Phase>(filter.phaseForEvenRows);
    const Record records[] = {
        {inverse.spec, {offsetof(Object, lowFilter), offsetof(Object, highFilter)}, {{offsetof(Object, magic), 46}}},
        {object.lowFilter,
         {offsetof(Filter, phaseForEvenRows), offsetof(Filter, phaseForOddRows), offsetof(Filter, rowFilter)},
         {{offsetof(Filter, anchor), -1}, {offsetof(Filter, leftBorder), -1}, {offsetof(Filter, rowStart), -1}}},
        {filter.phaseForEvenRows, {offsetof(Phase, taps)},
         {{offsetof(Phase, phaseAnchor), -1}, {offsetof(Phase, phaseBelow), -2}}},
        {phase.taps, {offsetof(Taps, taps)}, {{offsetof(Taps, count), 0}}},
        {filter.rowFilter, {offsetof(RowTaps, taps), offsetof(RowTaps, even)},
         {{offsetof(RowTaps, count), 0}, {offsetof(RowTaps, evenCount), 0}, {offsetof(RowTaps, oddCount), 0}}}};
    for (const Record& record : records) {
        record.doctor([&] {
            const int blocks = outstandingBlocks();
            Arguments arguments(inverse);
            arguments.dst = nullptr;
            EXPECT_EQ(arguments.run(), ruxStatusContextMismatch) << Note::all();
            arguments.buffer = nullptr;
            EXPECT_EQ(arguments.run(), ruxStatusNullPointer);
            int32_t* const nowhere = nullptr;
            EXPECT_EQ(call(ruxiWTInvGetBufSize_C1R, arguments.spec, nowhere), ruxStatusContextMismatch) << Note::all();
            EXPECT_EQ(call(ruxiWTInvFree_32f_C1R, inverse.spec), ruxStatusContextMismatch) << Note::all();
            EXPECT_EQ(outstandingBlocks(), blocks);
        });
    }
    int32_t* const nowhere = nullptr;
    int32_t size = 0;
    ruxWTInvSpec* const none = nullptr;
    EXPECT_EQ(call(ruxiWTInvGetBufSize_C1R, static_cast<const ruxWTInvSpec*>(inverse.spec), nowhere),
              ruxStatusNullPointer);
    EXPECT_EQ(call(ruxiWTInvGetBufSize_C1R, static_cast<const ruxWTInvSpec*>(none), &size), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxiWTInvFree_32f_C1R, none), ruxStatusNullPointer);
}

TEST_P(WaveletInverse, objectOfTheForwardTransform)
{
    const Inverse inverse(smallPair());
    const Forward forward(smallPair());
    Arguments arguments(inverse);
    arguments.spec = reinterpret_cast<const ruxWTInvSpec*>(forward.spec);
    EXPECT_EQ(arguments.run(), ruxStatusContextMismatch);
}

// Analysis and synthesis by pairs that belong together give the image back. Every band is periodic, as the image is.
static void expectReconstruction(const FilterPair& analysis, const FilterPair& synthesis)
{
    constexpr int size = 64, border = 16;
    Image<float> image(Shape{size, size}.margins(border, border, border, border), 3, waveletSamples);
    for (int y = -border; y < size + border; y++) {
        for (int x = -border; x < size + border; x++) image.set(x, y, image.get(x & (size - 1), y & (size - 1)));
    }
    const Shape half = Shape{size / 2, size / 2}.margins(border, border, border, border);
    Image<float> bands[4] = {Image<float>(half), Image<float>(half), Image<float>(half), Image<float>(half)};
    const Forward forward(analysis);
    ASSERT_EQ(call(ruxiWTFwd_32f_C1R, image.data(), image.step(), bands[0].data(), bands[0].step(), bands[1].data(),
                   bands[1].step(), bands[2].data(), bands[2].step(), bands[3].data(), bands[3].step(), bands[0].roi(),
                   forward.spec, forward.work()), 0);
    for (Image<float>& band : bands) {
        for (int y = -border; y < size / 2 + border; y++) {
            for (int x = -border; x < size / 2 + border; x++) {
                band.set(x, y, band.get(x & (size / 2 - 1), y & (size / 2 - 1)));
            }
        }
    }
    const Image<float> result(Shape{size, size});
    const Inverse inverse(synthesis);
    ASSERT_EQ(call(ruxiWTInv_32f_C1R, bands[0].data(), bands[0].step(), bands[1].data(), bands[1].step(),
                   bands[2].data(), bands[2].step(), bands[3].data(), bands[3].step(), bands[0].roi(), result.data(),
                   result.step(), inverse.spec, inverse.work()), 0);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) ASSERT_NEAR(result.get(x, y), image.get(x, y), 255 * 1e-5) << x << ", " << y;
    }
}

TEST_P(WaveletInverse, reconstructsByTwoTaps)
{
    const float half = 0.70710678f;
    FilterPair analysis, synthesis;
    analysis.low = {{half, half}, 1};
    analysis.high = {{-half, half}, 1};
    synthesis.low = {{half, half}, 0};
    synthesis.high = {{half, -half}, 0};
    expectReconstruction(analysis, synthesis);
}

// The 5/3 pair of ISO/IEC 15444-1.
TEST_P(WaveletInverse, reconstructsByFiveAndThreeTaps)
{
    FilterPair analysis, synthesis;
    analysis.low = {{-0.125f, 0.25f, 0.75f, 0.25f, -0.125f}, 2};
    analysis.high = {{-0.5f, 1, -0.5f}, 2};
    synthesis.low = {{0.5f, 1, 0.5f}, 1};
    synthesis.high = {{-0.125f, -0.25f, 0.75f, -0.25f, -0.125f}, 1};
    expectReconstruction(analysis, synthesis);
}

}
