// The constants of the conversions from RGB to YCbCr. Each function and each level has its own, to the last bit.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

struct Weights {
    int32_t red, green, blue;
};

struct Rounding {
    int32_t addend;
    int shift;
};

// (red R + green G + blue B + addend) >> shift
struct Component {
    Weights weights;
    Rounding rounding;
};

constexpr Weights lumaWeights = {16843, 33030, 6423};
constexpr Weights cbWeights = {-9699, -19071, 28770};
constexpr Weights crWeights = {28770, -24117, -4653};

constexpr Component roundedLuma = {lumaWeights, {0x108000, 16}};
constexpr Component unroundedLuma = {lumaWeights, {0x100000, 16}};

// 4:2:0: chroma of four pixels, of two where a column or a row has no partner, and of the one in the corner.
constexpr Component cbOfBlock = {cbWeights, {33587200, 18}};
constexpr Component crOfBlock = {crWeights, {33587200, 18}};
constexpr Component cbOfTwo = {cbWeights, {16793600, 17}};
constexpr Component crOfTwo = {crWeights, {16793600, 17}};
constexpr Component cbOfOne = {cbWeights, {0x808000, 16}};
constexpr Component crOfOne = {crWeights, {0x808000, 16}};

// 4:2:2: chroma of a pair.
constexpr Component cbOfPair = {cbWeights, {0x1010000, 17}};
constexpr Component crOfPair = {crWeights, {0x1010000, 17}};

// 4:2:2, the lone last pixel at a6 and w7.
constexpr Component vectorLoneLuma = {{16842, 33030, 6422}, {0x100000, 16}};
constexpr Component vectorLoneCb = {{-9699, -19070, 28770}, {0x800000, 16}};

// 4:2:2, blocks at a6: ((sum) >> 15) + 16 and ((sum) >> 16) + 128, the offsets taken into the sums.
constexpr Component blockLuma422 = {{8421, 16515, 3211}, {16 << 15, 15}};
constexpr Component blockCb422 = {{-4850, -9535, 14385}, {128 << 16, 16}};
constexpr Component blockCr422 = {{14385, -12059, -2327}, {128 << 16, 16}};

// 4:2:0, blocks at a6 and w7: (hi(128 R, red) + hi(128 G, green) + hi(128 B, blue) + addend) >> shift for the luma,
// and the same of 32 times the block's sums for the chroma, with hi(a, k) = (a k) >> 16.
constexpr Component blockLuma420 = {{1052, 2064, 401}, {128, 3}};
constexpr Component blockCb420 = {{-607, -1192, 1798}, {1024, 3}};
constexpr Component blockCr420 = {{1798, -1508, -291}, {1024, 3}};

}
}
