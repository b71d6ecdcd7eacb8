// The constants of every conversion to RGB. Each function and each level has its own, to the last bit.
#pragma once

#include "frame/level.h"

namespace rux::RUX_LEVEL {
namespace {

// R = sat((luma Y + redV (v - centre) + redOffset) >> shift)
// G = sat((luma Y + greenU (u - centre) + greenV (v - centre) + greenOffset) >> shift)
// B = sat((luma Y + blueU (u - centre) + blueOffset) >> shift)
struct PixelMatrix {
    int32_t luma;
    int32_t redV, greenU, greenV, blueU;
    int32_t centre;
    int32_t redOffset, greenOffset, blueOffset;
    int shift;
};

//                                     luma    redV  greenU  greenV   blueU centre, offsets of R, G and B, shift
constexpr PixelMatrix ycbcr422Pairs  = {76284, 104595, -25690, -53281, 132186,   0, -14608761,  8887730, -18140365, 16};
constexpr PixelMatrix ycbcr422Planar = {76282, 104593, -25689, -53279, 132184, 128,  -1187744, -1187744,  -1187744, 16};
constexpr PixelMatrix ycbcr422Tail   = {76282, 104593, -25689, -53279, 132184, 128,  -1220512, -1220512,  -1220512, 16};
constexpr PixelMatrix ycbcr420       = {76284, 104595, -25690, -53281, 132186, 128,  -1220544, -1220544,  -1220544, 16};
constexpr PixelMatrix yuv            = {65536,  74711, -25821, -38076, 133169, 128,         0,        0,         0, 16};
constexpr PixelMatrix yuvPairsLone   = { 8192,   9338,  -3227,  -4759,  16645, 128,         0,        0,         0, 13};

enum class Green { plus, minus };   // L + hi(u) + hi(v) with negative factors, or L - (hi(u) + hi(v))

// With hi(a, k) = (a k) >> 16 and a chroma sample c taken as a = (c - 128) << chromaBits:
//
// R = sat((L + hi(v, redV) + rounding) >> shift)
// G = sat((L + hi(u, greenU) + hi(v, greenV) + rounding) >> shift), or by differences
// B = sat((L + hi(u, blueU) + rounding) >> shift)
// L = hi((Y - 16) << 7, luma), or Y << shift where luma is 0
//
// In every fourth pixel of a row R gains hi(u, fourthRedU), and G has fourthGreenU for greenU.
struct VectorMatrix {
    int16_t luma;
    int chromaBits;
    int16_t redV, greenU, greenV, blueU;
    Green green;
    int16_t rounding;
    int shift;
    int16_t fourthRedU, fourthGreenU;
};

//                                                luma bits redV  greenU greenV blueU        rounding, shift, fourth
constexpr VectorMatrix ycbcr422PairsVectors     = {9536, 7, 13074, -3203, -6660, 16523, Green::plus,  0, 4, 0, -3203};
constexpr VectorMatrix ycbcr422PlanarVectors    = {9535, 7, 13074, -3211, -6660, 16523, Green::plus,  8, 4, 0, -3211};
constexpr VectorMatrix ycbcr420Vectors          = {4767, 7,  6537,  1605,  3330,  8261, Green::minus, 0, 3, 0,  1605};
constexpr VectorMatrix yuvVectors               = {   0, 4,  9338, -3227, -4759, 16645, Green::plus,  0, 1, 0, -3227};
constexpr VectorMatrix yuv422AlphaVectors       = {   0, 7,  9338,  3227,  4759, 16646, Green::minus, 8, 4, 0,  3227};
constexpr VectorMatrix yuv420FourthPixelVectors = {   0, 4,  9339, -3228, -4760, 16646, Green::plus,  0, 1, 4, -3232};

// To 16 bits a pixel.
constexpr VectorMatrix ycbcr422Packed16Vectors  = {9535, 7, 13074,  3211,  6660, 16523, Green::minus, 0, 4, 0,  3211};
constexpr VectorMatrix yuv420Packed16Vectors    = {   0, 7,  9338,  3227,  4759, 16646, Green::minus, 0, 4, 0,  3227};

}
}
