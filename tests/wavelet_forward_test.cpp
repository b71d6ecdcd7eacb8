// The forward wavelet transform, against the model and the contract's numbers.
#include "wavelet_filters.h"

namespace rux::test {

RUX_FAMILY(WaveletForward, "wavelet_forward");

// What the transform reads: from the region's first pixel the borders to the left and above, and to the right and below
// as far as the last output asks.
static Shape sourceShape(const FilterPair& pair, ruxiSize size)
{
    const model::Borders columns = model::analysisBorders(pair);
    const int anchor = std::max(pair.low.anchor, pair.high.anchor);
    return Shape{2 * size.width + columns.right, 2 * (size.height - 1) + anchor + 1}.margins(columns.left, columns.left, 0,
                                                                                         0);
}

struct Subbands {
    explicit Subbands(Case& c)
        : lowLow(c.image<float>()), highLow(c.image<float>()), lowHigh(c.image<float>()), highHigh(c.image<float>())
    {
    }
    explicit Subbands(const Shape& shape) : lowLow(shape, 1), highLow(shape, 2), lowHigh(shape, 3), highHigh(shape, 4) {}

    ruxStatus transform(const Image<float>& src, const Forward& forward, const HostState& host) const
    {
        return callUnder(host, ruxiWTFwd_32f_C1R, src.data(), src.step(), lowLow.data(), lowLow.step(), highLow.data(),
                         highLow.step(), lowHigh.data(), lowHigh.step(), highHigh.data(), highHigh.step(),
                         lowLow.roi(), forward.spec, forward.work());
    }
    const Image<float>& band(bool highVertical, bool highHorizontal) const
    {
        if (highVertical) return highHorizontal ? highHigh : highLow;
        return highHorizontal ? lowHigh : lowLow;
    }

    Image<float> lowLow, highLow, lowHigh, highHigh;
};

static void expectTransform(Level level, const FilterPair& pair, const Image<float>& src, const Subbands& bands,
                            int misalignment, Digest* digest = nullptr, const HostState& host = HostState())
{
    const Image<float> copies[4] = {bands.lowLow.clone(), bands.lowHigh.clone(), bands.highLow.clone(),
                                    bands.highHigh.clone()};
    const auto source = src.clone();
    const Forward forward(pair, misalignment);
    ASSERT_EQ(bands.transform(src, forward, host), 0);
    ASSERT_TRUE(src.equals(source));
    for (int i = 0; i < 4; i++) {
        const bool highVertical = i >= 2, highHorizontal = i % 2 == 1;
        const Image<float>& band = bands.band(highVertical, highHorizontal);
        const model::Plane plane = model::forwardBand(level, pair, highVertical, highHorizontal, src.data(), src.step(),
                                               band.data(), band.step(), band.roi());
        const char* const names[] = {"LowLow", "LowHigh", "HighLow", "HighHigh"};
        expectPlane(band, copies[i], plane, names[i]);
        if (digest) digest->addRegion(band);
    }
}

TEST_P(WaveletForward, ruxiWTFwd_32f_C1R)
{
    Digest digest;
    for (Case& c : casesOf(waveletSweep())) {
        const Note note([&] { return c.describe(); });
        const FilterPair pair = randomPair(c.random);
        const int misalignment = c.random.between(0, 15);
        const auto src = c.image<float>(sourceShape(pair, c.roi()), waveletSamples);
        const Subbands bands(c);
        expectTransform(level(), pair, src, bands, misalignment, c.isGolden() ? &digest : nullptr);
        if (HasFailure()) return;
    }
    expectGolden("wavelet_forward", "ruxiWTFwd_32f_C1R", level(), digest);
}

// Destinations at each place between two boundaries, narrow and at the edge of a block of columns.
TEST_P(WaveletForward, everyPlaceOfTheDestination)
{
    Random random(77);
    for (const int width : {1, 3, 4, 5, 8, 9, 13, 256, 257, 261}) {
        for (int place = 0; place < 16; place += width > 13 ? 4 : 1) {
            const FilterPair pair = randomPair(random);
            const Image<float> src(sourceShape(pair, {width, 1}), 5, waveletSamples);
            const Subbands bands{Shape{width, 1}.at({Edge::start, place})};
            expectTransform(level(), pair, src, bands, place);
            if (HasFailure()) return;
        }
    }
}

// Sums keep their order, their precision and the sign of their zeros.
TEST_P(WaveletForward, cancellingSums)
{
    Random random(79);
    for (int i = 0; i < 120; i++) {
        const FilterPair pair = cancellingPair(random);
        const ruxiSize size = {random.between(1, 40), 2};
        const Image<float> src(sourceShape(pair, size), static_cast<uint64_t>(i), cancellingSamples);
        const Subbands bands{Shape{size.width, size.height}.at({Edge::start, 4 * random.between(0, 3)})};
        const int precisions[] = {24, 53, 64};
        expectTransform(level(), pair, src, bands, 0, nullptr, HostState().precision(precisions[i % 3]));
        if (HasFailure()) return;
    }
}

// Both passes down the columns come before the first band is written: bands may stand where the source's rows were.
TEST_P(WaveletForward, bandsInPlaceOfTheSource)
{
    FilterPair pair;
    pair.low = {{0.5f, 0.5f}, 1};
    pair.high = {{-0.5f, 0.5f}, 1};
    const Forward forward(pair);
    Image<float> image(Shape{4, 2});
    for (int i = 0; i < 8; i++) image.set(i % 4, i / 4, static_cast<float>(i + 1));
    float* const rows[2] = {image.data(), image.data() + image.step() / 4};
    ASSERT_EQ(call(ruxiWTFwd_32f_C1R, static_cast<const float*>(rows[0]), image.step(), rows[0], image.step(), rows[1],
                   image.step(), rows[0] + 2, image.step(), rows[1] + 2, image.step(), ruxiSize{2, 1},
                   static_cast<const ruxWTFwdSpec*>(forward.spec), forward.work()), 0);
    const float expected[8] = {3.5f, 5.5f, -0.5f, -0.5f, -2, -2, 0, 0};
    for (int i = 0; i < 8; i++) EXPECT_EQ(image.get(i % 4, i / 4), expected[i]) << i;
}

// The fields that the contract lays out.
struct Object {
    int32_t magic;
    void* lowFilter;
    void* highFilter;
    int32_t rowBufferLength, rowBufferBytes, leftBorder, rightBorder;
};

struct Filter {
    void *columnFilter, *rowFilter;
    int32_t anchor, leftBorder, rightBorder;
};

struct Taps {
    float* taps;
    int32_t count;
};

struct RowTaps {
    int32_t count;
    float *taps, *reversed;
};

static Object objectOf(const FilterPair& pair, int32_t& bytes)
{
    const Forward forward(pair);
    bytes = forward.bytes;
    return model::load<Object>(forward.spec);
}

TEST_P(WaveletForward, bordersAndSizes)
{
    const struct { int lowLength, lowAnchor, highLength, highAnchor, left, right; } numbers[] = {
        {2, 0, 2, 0, 1, -1}, {2, 1, 2, 1, 0, 0}, {2, 0, 2, 1, 1, 0}, {9, 4, 7, 2, 4, 3}, {5, 0, 3, 2, 4, 1}};
    for (const auto& n : numbers) {
        FilterPair pair;
        pair.low = {std::vector<float>(static_cast<size_t>(n.lowLength), 0.5f), n.lowAnchor};
        pair.high = {std::vector<float>(static_cast<size_t>(n.highLength), 0.5f), n.highAnchor};
        int32_t bytes;
        const Object object = objectOf(pair, bytes);
        const int length = n.left + n.right + 512;
        EXPECT_EQ(object.magic, 46);
        EXPECT_EQ(object.leftBorder, n.left);
        EXPECT_EQ(object.rightBorder, n.right);
        EXPECT_EQ(object.rowBufferLength, length);
        EXPECT_EQ(object.rowBufferBytes, (4 * length + 31) / 32 * 32);
        EXPECT_EQ(bytes, object.rowBufferBytes + 4 * length);
    }
}

TEST_P(WaveletForward, creationRefusesWrongArguments)
{
    expectCreationToRefuse<ruxWTFwdSpec>(ruxiWTFwdInitAlloc_32f_C1R);
}

TEST_P(WaveletForward, creationOutOfMemory)
{
    expectCreationWithoutMemory<ruxWTFwdSpec>(ruxiWTFwdInitAlloc_32f_C1R, ruxiWTFwdFree_32f_C1R);
}

// The transform with all arguments right but those that an action has changed.
struct Arguments {
    explicit Arguments(const Forward& forward) : spec(forward.spec), buffer(forward.work()) {}

    ruxStatus run() const
    {
        return call(ruxiWTFwd_32f_C1R, src, steps[0], bands[0], steps[1], bands[1], steps[2], bands[2], steps[3],
                    bands[3], steps[4], size, spec, buffer);
    }

    Image<float> source{Shape{6, 6}.margins(2, 2, 0, 0), 1}, planes[4] = {
        Image<float>(Shape{2, 2}, 2), Image<float>(Shape{2, 2}, 3), Image<float>(Shape{2, 2}, 4),
        Image<float>(Shape{2, 2}, 5)};
    const float* src = source.data();
    float* bands[4] = {planes[0].data(), planes[1].data(), planes[2].data(), planes[3].data()};
    int32_t steps[5] = {source.step(), 8, 8, 8, 8};
    ruxiSize size = {2, 2};
    const ruxWTFwdSpec* spec;
    uint8_t* buffer;
};

TEST_P(WaveletForward, transformRefusesWrongArguments)
{
    FilterPair pair;
    pair.low = pair.high = {{0.5f, 0.5f}, 1};
    const Forward forward(pair);
    const auto status = [&](const std::function<void(Arguments&)>& change) {
        Arguments arguments(forward);
        change(arguments);
        const ruxStatus result = arguments.run();
        for (int i = 0; i < 4 && result != 0; i++) {
            EXPECT_TRUE(arguments.planes[i].equals(Image<float>(Shape{2, 2}, static_cast<uint64_t>(i) + 2)));
        }
        return result;
    };
    EXPECT_EQ(status([](Arguments&) {}), 0);
    EXPECT_EQ(status([](Arguments& a) { a.spec = nullptr, a.buffer = nullptr; }), ruxStatusNullPointer);
    EXPECT_EQ(status([](Arguments& a) { a.buffer = nullptr, a.size = {0, 0}; }), ruxStatusNullPointer);
    EXPECT_EQ(status([](Arguments& a) { a.src = nullptr, a.size = {0, 0}; }), ruxStatusNullPointer);
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

// Another tag, and filters that are not there: refused before all other pointers, and nothing is released.
TEST_P(WaveletForward, unsoundObjects)
{
    FilterPair pair;
    pair.low = pair.high = {{0.5f, 0.5f}, 1};
    const Forward forward(pair);
    const auto object = model::load<Object>(forward.spec);
    const auto filter = model::load<Filter>(object.lowFilter);
    const Record records[] = {
        {forward.spec, {offsetof(Object, lowFilter), offsetof(Object, highFilter)},
         {{offsetof(Object, magic), 47}, {offsetof(Object, leftBorder), -1}, {offsetof(Object, rightBorder), -2}}},
        {object.lowFilter, {offsetof(Filter, columnFilter), offsetof(Filter, rowFilter)},
         {{offsetof(Filter, anchor), -1}, {offsetof(Filter, leftBorder), -1}}},
        {filter.columnFilter, {offsetof(Taps, taps)}, {{offsetof(Taps, count), 0}}},
        {filter.rowFilter, {offsetof(RowTaps, taps), offsetof(RowTaps, reversed)}, {{offsetof(RowTaps, count), 0}}}};
    for (const Record& record : records) {
        record.doctor([&] {
            const int blocks = outstandingBlocks();
            Arguments arguments(forward);
            arguments.buffer = nullptr;
            EXPECT_EQ(arguments.run(), ruxStatusContextMismatch) << Note::all();
            int32_t* const nowhere = nullptr;
            EXPECT_EQ(call(ruxiWTFwdGetBufSize_C1R, arguments.spec, nowhere), ruxStatusContextMismatch) << Note::all();
            EXPECT_EQ(call(ruxiWTFwdFree_32f_C1R, forward.spec), ruxStatusContextMismatch) << Note::all();
            EXPECT_EQ(outstandingBlocks(), blocks);
        });
    }
    int32_t* const nowhere = nullptr;
    int32_t size = 0;
    ruxWTFwdSpec* const none = nullptr;
    EXPECT_EQ(call(ruxiWTFwdGetBufSize_C1R, static_cast<const ruxWTFwdSpec*>(forward.spec), nowhere),
              ruxStatusNullPointer);
    EXPECT_EQ(call(ruxiWTFwdGetBufSize_C1R, static_cast<const ruxWTFwdSpec*>(none), &size), ruxStatusNullPointer);
    EXPECT_EQ(call(ruxiWTFwdFree_32f_C1R, none), ruxStatusNullPointer);
}

// The object of the other direction.
TEST_P(WaveletForward, objectOfTheInverse)
{
    FilterPair pair;
    pair.low = pair.high = {{0.5f, 0.5f}, 1};
    const Inverse inverse(pair);
    const Forward forward(pair);
    Arguments arguments(forward);
    arguments.spec = reinterpret_cast<const ruxWTFwdSpec*>(inverse.spec);
    EXPECT_EQ(arguments.run(), ruxStatusContextMismatch);
}

}
