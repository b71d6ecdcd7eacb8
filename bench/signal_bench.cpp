// Vectors of samples; a place's size is its number of elements. VOLK's kernels are the widest that the processor has.
// powf stands in a loop, as a program without a vector function would have it.
#include <cmath>
#include <cstring>

#include "bench.h"
#include "image.h"
#include "ruxlib.h"

#ifdef RUX_WITH_VOLK
#include <volk/volk.h>
#endif

namespace rux::bench {
namespace {

int32_t lengthOf(Size size)
{
    return size.width * size.height;
}

// A vector of random elements.
template <typename Element>
class Vector {
public:
    explicit Vector(int32_t length) : image({length, 1}) {}
    Element* data() const { return image.data(); }
    size_t bytes() const { return image.bytes(); }

private:
    Image<Element> image;
};

// operation(from, to, length) over two vectors.
template <typename From, typename To, typename Operation>
MakeWork between(Operation operation)
{
    return [=](Size size) {
        const int32_t length = lengthOf(size);
        const Vector<From> from(length);
        const Vector<To> to(length);
        return Work{from.bytes() + to.bytes(), [=] { operation(from.data(), to.data(), length); }};
    };
}

// The same with magnitudes from 0.1 to 1000 in the first.
template <typename Operation>
MakeWork betweenMagnitudes(Operation operation)
{
    return [=](Size size) {
        const int32_t length = lengthOf(size);
        const Vector<float> from(length), to(length);
        for (int32_t i = 0; i < length; ++i) from.data()[i] = 0.1f * std::exp2(static_cast<float>(i % 1009) / 76);
        return Work{from.bytes() + to.bytes(), [=] { operation(from.data(), to.data(), length); }};
    };
}

#ifdef RUX_WITH_VOLK
#define RUX_VOLK(From, To, ...) \
    "volk", between<From, To>([=](const From* from, To* to, int32_t length) { __VA_ARGS__; })
#else
#define RUX_VOLK(From, To, ...) "", nullptr
#endif

constexpr float exponent = 0.37f;

void addMoves(Cases& cases)
{
    cases.push_back({"ruxsCopy_8u", between<uint8_t, uint8_t>(ruxsCopy_8u), "memcpy",
                     between<uint8_t, uint8_t>([](const uint8_t* from, uint8_t* to, int32_t length) {
                         std::memcpy(to, from, static_cast<size_t>(length));
                     })});
    cases.push_back({"ruxsConvert_16s32f", between<int16_t, float>(ruxsConvert_16s32f),
                     RUX_VOLK(int16_t, float,
                              volk_16i_s32f_convert_32f(to, from, 1, static_cast<unsigned>(length)))});
    for (const int32_t channels : {2, 6}) {
        const std::string suffix = " " + std::to_string(channels);
        const MakeWork apart = [=](Size size) {
            const int32_t frames = lengthOf(size) / channels;
            const Vector<int16_t> frame(frames * channels), channel(frames * channels);
            return Work{2 * frame.bytes(), [=] {
                            int16_t* places[6];
                            for (int32_t c = 0; c < channels; ++c) places[c] = channel.data() + c * frames;
                            ruxsDeinterleave_16s(frame.data(), channels, frames, places);
                        }};
        };
        const MakeWork together = [=](Size size) {
            const int32_t frames = lengthOf(size) / channels;
            const Vector<int16_t> frame(frames * channels), channel(frames * channels);
            return Work{2 * frame.bytes(), [=] {
                            const int16_t* places[6];
                            for (int32_t c = 0; c < channels; ++c) places[c] = channel.data() + c * frames;
                            ruxsInterleave_16s(places, channels, frames, frame.data());
                        }};
        };
        Case deinterleave{"ruxsDeinterleave_16s" + suffix, apart, "", nullptr};
#ifdef RUX_WITH_VOLK
        if (channels == 2) {
            deinterleave.peer = "volk";
            deinterleave.makePeer = between<int16_t, int16_t>([](const int16_t* from, int16_t* to, int32_t length) {
                volk_16ic_deinterleave_16i_x2(to, to + length / 2, reinterpret_cast<const lv_16sc_t*>(from),
                                              static_cast<unsigned>(length / 2));
            });
        }
#endif
        cases.push_back(deinterleave);
        cases.push_back({"ruxsInterleave_16s" + suffix, together, "", nullptr});
    }
}

void addSums(Cases& cases)
{
    for (const int32_t hint : {1, 2}) {
        const std::string suffix = hint == 1 ? " fast" : " accurate";
        cases.push_back({"ruxsSum_32f" + suffix, between<float, float>([=](const float* from, float*, int32_t length) {
                             float sum;
                             ruxsSum_32f(from, length, &sum, hint);
                         }),
                         RUX_VOLK(float, float, volk_32f_accumulator_s32f(to, from, static_cast<unsigned>(length)))});
        cases.push_back({"ruxsMean_32f" + suffix, between<float, float>([=](const float* from, float*, int32_t length) {
                             float mean;
                             ruxsMean_32f(from, length, &mean, hint);
                         }),
                         RUX_VOLK(float, float, volk_32f_accumulator_s32f(to, from, static_cast<unsigned>(length)))});
    }
    cases.push_back({"ruxsSignChangeRate_16s", between<int16_t, int32_t>([](const int16_t* from, int32_t* to, int32_t n) {
                         ruxsSignChangeRate_16s(from, n, to);
                     }), "", nullptr});
    cases.push_back({"ruxsSignChangeRate_32f", between<float, float>([](const float* from, float* to, int32_t length) {
                         ruxsSignChangeRate_32f(from, length, to);
                     }), "", nullptr});
}

void addFilters(Cases& cases)
{
    cases.push_back({"ruxsThreshold_32f_I", between<float, float>([](const float*, float* to, int32_t length) {
                         ruxsThreshold_32f_I(to, length, 0.5f, 4);
                     }), "", nullptr});
    for (const int32_t mask : {3, 5, 15})
        cases.push_back({"ruxsFilterMedian_16s " + std::to_string(mask),
                         between<int16_t, int16_t>([=](const int16_t* from, int16_t* to, int32_t length) {
                             ruxsFilterMedian_16s(from, to, length, mask);
                         }), "", nullptr});
}

void addPowers(Cases& cases)
{
    const MakeWork powers = betweenMagnitudes([](const float* from, float* to, int32_t length) {
        ruxsPowx_32f_A11(from, exponent, to, length);
    });
    cases.push_back({"ruxsPowx_32f_A11", powers, "powf",
                     betweenMagnitudes([](const float* from, float* to, int32_t length) {
                         for (int32_t i = 0; i < length; ++i) to[i] = std::pow(from[i], exponent);
                     })});
#ifdef RUX_WITH_VOLK
    const MakeWork volk = [](Size size) {
        const Vector<float> exponents(lengthOf(size));
        for (int32_t i = 0; i < lengthOf(size); ++i) exponents.data()[i] = exponent;
        return betweenMagnitudes([=](const float* from, float* to, int32_t length) {
            volk_32f_x2_pow_32f(to, exponents.data(), from, static_cast<unsigned>(length));
        })(size);
    };
    cases.push_back({"ruxsPowx_32f_A11", powers, "volk", volk});
#endif
}

}

void addSignal(Cases& cases)
{
    addMoves(cases);
    addSums(cases);
    addFilters(cases);
    addPowers(cases);
}

}
