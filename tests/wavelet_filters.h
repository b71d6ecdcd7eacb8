// Filters for the tests of the wavelet transform, and the library's objects made of them.
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

#include "model/wavelet.h"
#include "ruxlib.h"
#include "support/family.h"

namespace rux::test {

using model::FilterPair;
using model::WaveletFilter;

inline WaveletFilter randomFilter(Random& random)
{
    WaveletFilter filter;
    const int length = random.oneIn(3) ? 2 : random.between(2, 13);
    for (int i = 0; i < length; i++) {
        const auto tap = static_cast<float>(random.between(1, 100000)) / 70000;
        filter.taps.push_back(random.oneIn(2) ? -tap : tap);
    }
    filter.anchor = random.between(0, length - 1);
    return filter;
}

inline FilterPair randomPair(Random& random)
{
    FilterPair pair;
    pair.low = randomFilter(random);
    pair.high = randomFilter(random);
    return pair;
}

// Ordinary samples, of either sign and none of them 0.
inline void waveletSamples(Random& random, float* row, int count)
{
    for (int i = 0; i < count; i++) {
        const auto sample = static_cast<float>(random.between(1, 25500000)) / 100000;
        row[i] = random.oneIn(2) ? -sample : sample;
    }
}

// Samples and taps whose sums depend on the order and on the precision: parts of very different size cancel.
inline void cancellingSamples(Random& random, float* row, int count)
{
    const float large = 0x1p60f, middle = 0x1p30f;
    const float samples[] = {large, middle, 1, -1, -middle, -large, 3, 0x1p-31f, 0, -0.0f};
    for (int i = 0; i < count; i++) row[i] = samples[random.between(0, 9)];
}

inline FilterPair cancellingPair(Random& random)
{
    FilterPair pair = randomPair(random);
    for (WaveletFilter* filter : {&pair.low, &pair.high}) {
        for (float& tap : filter->taps) tap = tap < 0 ? -1.0f : 1.0f;
    }
    return pair;
}

// An object of one direction, and its work buffer at any multiple of 4.
template <class Spec>
class Transform {
public:
    using Create = ruxStatus(RUXCALL*)(Spec**, const float*, int32_t, int32_t, const float*, int32_t, int32_t);
    using Size = ruxStatus(RUXCALL*)(const Spec*, int32_t*);
    using Free = ruxStatus(RUXCALL*)(Spec*);

    Transform(Create create, Size sizeOf, Free release, const FilterPair& pair, int misalignment)
        : release(release)
    {
        const Image<float> low = imageOf(pair.low), high = imageOf(pair.high);   // copied: gone after the creation
        EXPECT_EQ(call(create, &spec, static_cast<const float*>(low.data()), pair.low.length(), pair.low.anchor,
                       static_cast<const float*>(high.data()), pair.high.length(), pair.high.anchor), 0);
        EXPECT_EQ(call(sizeOf, static_cast<const Spec*>(spec), &bytes), 0);
        buffer = std::make_unique<Image<uint8_t>>(vectorOf(bytes).at({Edge::start, 4 * misalignment}));
    }
    ~Transform() { EXPECT_EQ(call(release, spec), 0); }
    Transform(const Transform&) = delete;

    uint8_t* work() const { return buffer->data(); }

    Spec* spec = nullptr;
    int32_t bytes = -77;

private:
    static Image<float> imageOf(const WaveletFilter& filter)
    {
        Image<float> image(vectorOf(filter.length()));
        for (int i = 0; i < filter.length(); i++) image.set(i, 0, filter.taps[static_cast<size_t>(i)]);
        return image;
    }

    Free release;
    std::unique_ptr<Image<uint8_t>> buffer;
};

struct Forward : Transform<ruxWTFwdSpec> {
    explicit Forward(const FilterPair& pair, int misalignment = 0)
        : Transform(ruxiWTFwdInitAlloc_32f_C1R, ruxiWTFwdGetBufSize_C1R, ruxiWTFwdFree_32f_C1R, pair, misalignment)
    {
    }
};

struct Inverse : Transform<ruxWTInvSpec> {
    explicit Inverse(const FilterPair& pair, int misalignment = 0)
        : Transform(ruxiWTInvInitAlloc_32f_C1R, ruxiWTInvGetBufSize_C1R, ruxiWTInvFree_32f_C1R, pair, misalignment)
    {
    }
};

// The checks of both creations.
template <class Spec>
void expectCreationToRefuse(typename Transform<Spec>::Create creation)
{
    const std::vector<float> taps(4, 0.5f);
    const float* const low = taps.data();
    const float* const none = nullptr;
    Spec* const untouched = reinterpret_cast<Spec*>(uintptr_t(16));
    Spec* spec = untouched;
    Spec** const nowhere = nullptr;
    const auto create = [&](Spec** to, const float* first, int32_t lowLength, int32_t lowAnchor, const float* second,
                            int32_t highLength, int32_t highAnchor) {
        return call(creation, to, first, lowLength, lowAnchor, second, highLength, highAnchor);
    };
    EXPECT_EQ(create(nowhere, low, 4, 0, low, 4, 0), ruxStatusNullPointer);
    EXPECT_EQ(create(&spec, none, 4, 0, low, 4, 0), ruxStatusNullPointer);
    EXPECT_EQ(create(&spec, low, 1, 9, none, 4, 0), ruxStatusNullPointer);
    for (const int32_t length : {1, 0, -1, INT_MIN}) {
        EXPECT_EQ(create(&spec, low, length, 9, low, 4, 0), ruxStatusSizeError);
        EXPECT_EQ(create(&spec, low, 4, 9, low, length, 0), ruxStatusSizeError);
    }
    for (const int32_t anchor : {-1, 4, INT_MIN, INT_MAX}) {
        EXPECT_EQ(create(&spec, low, 4, anchor, low, 4, 0), ruxStatusAnchor);
        EXPECT_EQ(create(&spec, low, 4, 0, low, 4, anchor), ruxStatusAnchor);
    }
    EXPECT_EQ(spec, untouched);
}

// Each allocation of a creation refused in turn: null is stored and nothing is left.
template <class Spec>
void expectCreationWithoutMemory(typename Transform<Spec>::Create creation, typename Transform<Spec>::Free release)
{
    const std::vector<float> taps(4, 0.5f);
    const float* const low = taps.data();
    forgetBlocks();
    Spec* whole = nullptr;
    ASSERT_EQ(call(creation, &whole, low, 4, 0, low, 4, 0), 0);
    const int allocations = allocationsAsked();
    ASSERT_EQ(call(release, whole), 0);
    EXPECT_GT(allocations, 0);
    forEachRefusal(allocations, [&](bool refused) {
        Spec* spec = reinterpret_cast<Spec*>(uintptr_t(16));
        EXPECT_EQ(call(creation, &spec, low, 4, 0, low, 4, 0), refused ? ruxStatusMemoryAllocated : ruxStatusOk);
        EXPECT_EQ(spec == nullptr, refused);
        if (spec) call(release, spec);
    });
}

// A field of one of an object's records holds another value while this lives.
template <class Field>
class Doctored {
public:
    Doctored(void* record, size_t offset, Field value)
        : place(static_cast<uint8_t*>(record) + offset), saved(model::load<Field>(place))
    {
        model::store(place, value);
    }
    ~Doctored() { model::store(place, saved); }

private:
    uint8_t* place;
    Field saved;
};

// A record of an object: where its pointers stand, and its numbers with the greatest value that is refused.
struct Record {
    void* address;
    std::vector<size_t> pointers;
    std::vector<std::pair<size_t, int32_t>> numbers;

    void doctor(const std::function<void()>& expectRefused) const
    {
        for (const size_t offset : pointers) {
            const Note note([=] { return "pointer at " + std::to_string(offset); });
            const Doctored<void*> null(address, offset, nullptr);
            expectRefused();
        }
        for (const auto& [offset, value] : numbers) {
            const Note note([offset = offset] { return "number at " + std::to_string(offset); });
            const Doctored<int32_t> wrong(address, offset, value);
            expectRefused();
        }
    }
};

// The image holds the plane's values, as near as they are told, and nothing else of it has changed.
inline void expectPlane(const Image<float>& image, const Image<float>& before, const model::Plane& plane, const char* name)
{
    auto expected = before.clone();
    for (int y = 0; y < image.height(); y++) {
        for (int x = 0; x < image.width(); x++) {
            const model::Sample wanted = plane[static_cast<size_t>(y)][static_cast<size_t>(x)];
            const float value = image.get(x, y);
            ASSERT_TRUE(wanted.freedom == 0 ? model::load<uint32_t>(&value) == model::load<uint32_t>(&wanted.value)
                                            : std::fabs(value - wanted.value) <= wanted.freedom)
                << name << " at " << x << ", " << y << " is " << value << ", not " << wanted.value;
            expected.set(x, y, value);
        }
    }
    ASSERT_TRUE(image.equals(expected)) << name << " was written outside its region";
}

inline SweepOptions waveletSweep()
{
    std::vector<int> widths;
    for (int width = 1; width <= 40; width++) widths.insert(widths.end(), {width, width, width});
    widths.insert(widths.end(), {63, 64, 65, 100, 255, 256, 257, 258, 259, 260, 261, 300, 511, 512, 513});
    return imageSweep().widthsOf(widths).heightsOf({1, 2, 3});
}

}
