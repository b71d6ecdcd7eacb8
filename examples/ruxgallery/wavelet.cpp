#include "wavelet.h"

#include <memory>

#include "tile.h"

namespace {

const float analysisLow[] = {-0.125f, 0.25f, 0.75f, 0.25f, -0.125f}, analysisHigh[] = {-0.5f, 1, -0.5f};
const float synthesisLow[] = {0.5f, 1, 0.5f}, synthesisHigh[] = {-0.125f, -0.25f, 0.75f, -0.25f, -0.125f};

// The bands' border comes from a region that is larger on all sides, around which the filters read as far again.
constexpr int regionBorder = 2 * Bands::border, sourceBorder = regionBorder + 2;

std::shared_ptr<ruxWTFwdSpec> analysis()
{
    ruxWTFwdSpec* spec = nullptr;
    require(ruxiWTFwdInitAlloc_32f_C1R(&spec, analysisLow, 5, 2, analysisHigh, 3, 2));
    return {spec, [](ruxWTFwdSpec* object) { ruxiWTFwdFree_32f_C1R(object); }};
}

std::shared_ptr<ruxWTInvSpec> synthesis()
{
    ruxWTInvSpec* spec = nullptr;
    require(ruxiWTInvInitAlloc_32f_C1R(&spec, synthesisLow, 3, 1, synthesisHigh, 5, 1));
    return {spec, [](ruxWTInvSpec* object) { ruxiWTInvFree_32f_C1R(object); }};
}

}

Bands::Bands(ruxiSize size)
    : lowLow({size.width / 2 + 2 * border, size.height / 2 + 2 * border}), highLow(lowLow), lowHigh(lowLow),
      highHigh(lowLow)
{
}

ruxiSize Bands::size() const
{
    return {lowLow.width - 2 * border, lowLow.height - 2 * border};
}

double transform(const Plane& plane, Bands& bands)
{
    const Plane around = bordered(plane, sourceBorder);
    FloatImage source(around.size());
    require(ruxiConvert_8u32f_C1R(around.data(), around.step(), source.data(), source.step(), source.size()));
    const std::shared_ptr<ruxWTFwdSpec> spec = analysis();
    int32_t bytes = 0;
    require(ruxiWTFwdGetBufSize_C1R(spec.get(), &bytes));
    std::vector<float> buffer(size_t(bytes) / sizeof(float));
    bands = Bands(plane.size());
    const int start = sourceBorder - regionBorder, step = bands.lowLow.step();
    return timed([&] {
        require(ruxiWTFwd_32f_C1R(source.at(start, start), source.step(), bands.lowLow.data(), step,
                                  bands.highLow.data(), step, bands.lowHigh.data(), step, bands.highHigh.data(), step,
                                  bands.sizeWithBorder(), spec.get(), reinterpret_cast<uint8_t*>(buffer.data())));
    });
}

double transformBack(const Bands& bands, FloatImage& result)
{
    const std::shared_ptr<ruxWTInvSpec> spec = synthesis();
    int32_t bytes = 0;
    require(ruxiWTInvGetBufSize_C1R(spec.get(), &bytes));
    std::vector<float> buffer(size_t(bytes) / sizeof(float));
    result = FloatImage({bands.size().width * 2, bands.size().height * 2});
    const int start = Bands::border, step = bands.lowLow.step();
    return timed([&] {
        require(ruxiWTInv_32f_C1R(bands.lowLow.at(start, start), step, bands.highLow.at(start, start), step,
                                  bands.lowHigh.at(start, start), step, bands.highHigh.at(start, start), step,
                                  bands.size(), result.data(), result.step(), spec.get(),
                                  reinterpret_cast<uint8_t*>(buffer.data())));
    });
}
