// Moments, and the wavelet transform in both directions, which has no peer: its GB/s stand beside those of a copy.
#include <memory>

#include "bench.h"
#include "image.h"
#include "peers.h"
#include "ruxlib.h"

namespace rux::bench {
namespace {

void addMoments(Cases& cases)
{
    for (const ruxAlgHint hint : {ruxAlgHint(0), ruxAlgHint(ruxAlgHintAccurate)}) {
        const MakeWork make = [=](Size size) {
            const Image<float> image(size);
            ruxMomentState* state = nullptr;
            ruxiMomentInitAlloc_64f(&state, hint);
            const std::shared_ptr<ruxMomentState> owner(state, ruxiMomentFree_64f);
            return Work{image.bytes(), [=] {
                            ruxiMoments64f_32f_C1R(image.data(), image.step(), {size.width, size.height}, owner.get());
                        }};
        };
        const char* const name = hint ? "ruxiMoments64f_32f_C1R accurate" : "ruxiMoments64f_32f_C1R fast";
#ifdef RUX_WITH_OPENCV
        const MakeWork opencv = [](Size size) {
            const Image<float> image(size);
            return Work{image.bytes(), [=] {
                            volatile double mass = cv::moments(matrixOf(image, size)).m00;
                            (void)mass;
                        }};
        };
        cases.push_back({name, make, "opencv", opencv});
#else
        cases.push_back({name, make, "", nullptr});
#endif
    }
    cases.push_back({"ruxiGetSpatialMoment_64f", [](Size) {
                         const Image<float> image({8, 8});
                         ruxMomentState* state = nullptr;
                         ruxiMomentInitAlloc_64f(&state, 0);
                         const std::shared_ptr<ruxMomentState> owner(state, ruxiMomentFree_64f);
                         ruxiMoments64f_32f_C1R(image.data(), image.step(), {8, 8}, state);
                         return Work{8, [=] {
                                         double value;
                                         ruxiGetSpatialMoment_64f(owner.get(), 2, 1, 0, {3, 4}, &value);
                                     }};
                     }, "", nullptr});
}

struct Filter {
    std::vector<float> taps;
    int32_t anchor;

    const float* data() const { return taps.data(); }
    int32_t length() const { return static_cast<int32_t>(taps.size()); }
};

struct FilterPair {
    const char* name;
    Filter analysisLow, analysisHigh, synthesisLow, synthesisHigh;
};

// Of two taps, and of nine and seven (ISO/IEC 15444-1).
const FilterPair pairs[] = {
    {"2/2", {{0.5f, 0.5f}, 1}, {{-0.5f, 0.5f}, 1}, {{1, 1}, 0}, {{1, -1}, 0}},
    {"9/7",
     {{0.026749f, -0.016864f, -0.078223f, 0.266864f, 0.602949f, 0.266864f, -0.078223f, -0.016864f, 0.026749f}, 4},
     {{0.091272f, -0.057544f, -0.591272f, 1.115087f, -0.591272f, -0.057544f, 0.091272f}, 4},
     {{-0.091272f, -0.057544f, 0.591272f, 1.115087f, 0.591272f, -0.057544f, -0.091272f}, 3},
     {{0.026749f, 0.016864f, -0.078223f, -0.266864f, 0.602949f, -0.266864f, -0.078223f, 0.016864f, 0.026749f}, 3}}};

constexpr int32_t border = 16;

// A float image with a border on all sides.
class Bordered {
public:
    explicit Bordered(Size size) : image({size.width + 2 * border, size.height + 2 * border}) {}
    float* data() const { return image.data() + border * (image.step() / 4) + border; }
    int32_t step() const { return image.step(); }

private:
    Image<float> image;
};

// The four subbands of an image, and the image; a place's size is the image's.
struct Planes {
    explicit Planes(Size size)
        : half({size.width / 2, size.height / 2}), image(size),
          bands{Bordered(half), Bordered(half), Bordered(half), Bordered(half)}
    {
    }

    size_t bytes(Size size) const { return 2 * sizeof(float) * static_cast<size_t>(size.width) * size.height; }

    Size half;
    Bordered image;
    Bordered bands[4];
};

MakeWork forward(const FilterPair& pair)
{
    return [&pair](Size size) {
        const Planes planes(size);
        ruxWTFwdSpec* spec = nullptr;
        ruxiWTFwdInitAlloc_32f_C1R(&spec, pair.analysisLow.data(), pair.analysisLow.length(), pair.analysisLow.anchor,
                                   pair.analysisHigh.data(), pair.analysisHigh.length(), pair.analysisHigh.anchor);
        const std::shared_ptr<ruxWTFwdSpec> owner(spec, ruxiWTFwdFree_32f_C1R);
        int32_t bytes = 0;
        ruxiWTFwdGetBufSize_C1R(spec, &bytes);
        const Image<uint8_t> buffer({bytes, 1});
        return Work{planes.bytes(size), [=] {
                        const Bordered* const b = planes.bands;
                        ruxiWTFwd_32f_C1R(planes.image.data(), planes.image.step(), b[0].data(), b[0].step(),
                                          b[1].data(), b[1].step(), b[2].data(), b[2].step(), b[3].data(),
                                          b[3].step(), {planes.half.width, planes.half.height}, owner.get(),
                                          buffer.data());
                    }};
    };
}

MakeWork inverse(const FilterPair& pair)
{
    return [&pair](Size size) {
        const Planes planes(size);
        ruxWTInvSpec* spec = nullptr;
        ruxiWTInvInitAlloc_32f_C1R(&spec, pair.synthesisLow.data(), pair.synthesisLow.length(),
                                   pair.synthesisLow.anchor, pair.synthesisHigh.data(), pair.synthesisHigh.length(),
                                   pair.synthesisHigh.anchor);
        const std::shared_ptr<ruxWTInvSpec> owner(spec, ruxiWTInvFree_32f_C1R);
        int32_t bytes = 0;
        ruxiWTInvGetBufSize_C1R(spec, &bytes);
        const Image<uint8_t> buffer({bytes, 1});
        return Work{planes.bytes(size), [=] {
                        const Bordered* const b = planes.bands;
                        ruxiWTInv_32f_C1R(b[0].data(), b[0].step(), b[1].data(), b[1].step(), b[2].data(), b[2].step(),
                                          b[3].data(), b[3].step(), {planes.half.width, planes.half.height},
                                          planes.image.data(), planes.image.step(), owner.get(), buffer.data());
                    }};
    };
}

}

void addAnalysis(Cases& cases)
{
    addMoments(cases);
    for (const FilterPair& pair : pairs) {
        cases.push_back({std::string("ruxiWTFwd_32f_C1R ") + pair.name, forward(pair), "", nullptr});
        cases.push_back({std::string("ruxiWTInv_32f_C1R ") + pair.name, inverse(pair), "", nullptr});
    }
}

}
