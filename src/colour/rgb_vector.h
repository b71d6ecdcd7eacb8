// Conversion to RGB in blocks of two lanes of pixels: 8 at a6, 16 at w7. Even and odd pixels stand in registers of
// their own, so that both meet the words of their chroma without a shuffle.
#pragma once

#include "colour/rgb_matrices.h"
#include "colour/rgb_vector_stores.h"
#include "colour/vector_rows.h"

namespace rux::RUX_LEVEL {
namespace {

// What the chroma adds to the luma of even and odd pixels.
struct ChromaTerms {
    Words red, green, blue;
    Words redOdd, greenOdd;
};

// Lanes that belong to every fourth pixel of a row: the odd pixel of an odd pair.
inline Words inOddLanes(int16_t ordinary, int16_t fourth)
{
    int16_t lanes[Words::count];
    for (int i = 0; i < Words::count; ++i) lanes[i] = i % 2 ? fourth : ordinary;
    return Words::load(lanes);
}

// c in the high byte, offset by 128, to (c - 128) << bits.
template <int bits>
inline Words scaledChroma(Words chroma)
{
    return shiftedRight<8 - bits>(chroma);
}

// Where the luma is Y << shift, (L + S + r) >> shift = Y + ((S + r) >> shift): the shift is taken on the chroma.
template <const VectorMatrix& matrix>
inline Words finished(Words sum)
{
    if constexpr (matrix.luma != 0) return sum;
    if constexpr (matrix.rounding != 0) sum = sum + Words::broadcast(matrix.rounding);
    return shiftedRight<matrix.shift>(sum);
}

template <const VectorMatrix& matrix>
inline ChromaTerms chromaTerms(ChromaBlock chroma)
{
    const Words u = scaledChroma<matrix.chromaBits>(chroma.u);
    const Words v = scaledChroma<matrix.chromaBits>(chroma.v);
    const Words zero = Words::broadcast(0);
    const Words red = highProduct(v, matrix.redV);
    const Words greenU = highProduct(u, matrix.greenU);
    const Words greenV = highProduct(v, matrix.greenV);
    const Words green = matrix.green == Green::plus ? greenU + greenV : zero - (greenU + greenV);

    ChromaTerms terms;
    terms.red = terms.redOdd = finished<matrix>(red);
    terms.green = terms.greenOdd = finished<matrix>(green);
    terms.blue = finished<matrix>(highProduct(u, matrix.blueU));
    if constexpr (matrix.fourthGreenU != matrix.greenU) {
        terms.redOdd = finished<matrix>(red + highProduct(u, inOddLanes(0, matrix.fourthRedU)));
        terms.greenOdd = finished<matrix>(highProduct(u, inOddLanes(matrix.greenU, matrix.fourthGreenU)) + greenV);
    }
    return terms;
}

// L + rounding of the pixels whose Y stands in the high byte of each word, and nothing in the low byte.
template <const VectorMatrix& matrix>
inline Words scaledLuma(Words luma256)
{
    // (Y - 16) 128 k >> 16 = (256 Y k/2 >> 16) - k/32 where k/32 is whole.
    if constexpr (matrix.luma % 32 == 0)
        return highProductUnsigned(luma256, matrix.luma / 2) + Words::broadcast(matrix.rounding - matrix.luma / 32);

    const Words scaled = shiftedRightUnsigned<1>(luma256) - Words::broadcast(16 * 128);
    const Words product = highProduct(scaled, matrix.luma);
    return matrix.rounding == 0 ? product : product + Words::broadcast(matrix.rounding);
}

template <const VectorMatrix& matrix>
inline RgbBlock addLuma(ChromaTerms terms, Words luma)
{
    if constexpr (matrix.luma == 0) {
        const Words even = luma & Words::broadcast(0xFF);
        const Words odd = shiftedRightUnsigned<8>(luma);
        return {even + terms.red,    odd + terms.redOdd, even + terms.green,
                odd + terms.greenOdd, even + terms.blue,  odd + terms.blue};
    } else {
        constexpr int shift = matrix.shift;
        const Words even = scaledLuma<matrix>(shiftedLeft<8>(luma));
        const Words odd = scaledLuma<matrix>(luma & Words::broadcast(static_cast<int16_t>(0xFF00)));
        return {shiftedRight<shift>(even + terms.red),   shiftedRight<shift>(odd + terms.redOdd),
                shiftedRight<shift>(even + terms.green), shiftedRight<shift>(odd + terms.greenOdd),
                shiftedRight<shift>(even + terms.blue),  shiftedRight<shift>(odd + terms.blue)};
    }
}

template <const VectorMatrix& matrix, typename Layout, typename Stores, typename Row>
[[gnu::always_inline]] inline void convertBlock(Row src, RgbRow dst)
{
    const PixelBlock block = loadBlock(src);
    storeBlock<Stores>(Layout(), addLuma<matrix>(chromaTerms<matrix>(block.chroma), block.luma), dst.pixels);
}

template <const VectorMatrix& matrix, typename Layout, typename Stores>
[[gnu::always_inline]] inline void convertBlock(PlanarRowPair src, RgbRowPair dst)
{
    const PixelBlock block = loadBlock(src.upper);
    const ChromaTerms terms = chromaTerms<matrix>(block.chroma);
    storeBlock<Stores>(Layout(), addLuma<matrix>(terms, block.luma), dst.upper);
    storeBlock<Stores>(Layout(), addLuma<matrix>(terms, Words::load(src.lowerLuma)), dst.lower);
}

// Less than a block, by way of a stage.
template <const VectorMatrix& matrix, typename Layout, typename Source, typename Destination>
[[gnu::noinline]] void convertStaged(Source src, Destination dst, size_t pixels)
{
    Stage<Source> source(src, pixels);
    Stage<Destination> destination;
    convertBlock<matrix, Layout, OrdinaryStores>(source.row(), destination.row());
    destination.copyTo(dst, pixels * Layout::pixelBytes);
}

// An even number of pixels. Where the fourth pixel of a row is special, blocks begin at multiples of four only.
template <const VectorMatrix& matrix, typename Layout, typename Stores, typename Source, typename Destination>
inline void convertBlocks(Source src, Destination dst, size_t pixels)
{
    constexpr bool fourthPixelDiffers = matrix.fourthGreenU != matrix.greenU;
    const auto block = [=](size_t x) {
        prefetchRow(src.at(x));
        convertBlock<matrix, Layout, Stores>(src.at(x), dst.template at<Layout>(x));
    };
    const auto rest = [=](size_t x) {
        convertStaged<matrix, Layout>(src.at(x), dst.template at<Layout>(x), pixels - x);
    };
    forEachBlock(pixels, !fourthPixelDiffers || pixels % 4 == 0, block, rest);
}

}
}
