#include "model/wavelet.h"

#include <algorithm>
#include <cmath>

namespace rux::model {
namespace {

constexpr int blockColumns = 256;

bool inDouble(Level level)
{
    return level == px || level == m6;
}

bool onBoundary(const float* pointer)
{
    return reinterpret_cast<uintptr_t>(pointer) % 16 == 0;
}

// One more tap of a column: each product and sum in the level's precision, the element a float after each.
float columnStep(Level level, float element, float sample, float tap)
{
    if (inDouble(level)) return static_cast<float>(element + static_cast<double>(sample) * tap);
    const float product = sample * tap;
    return element + product;
}

float firstColumnStep(Level level, float sample, float tap)
{
    return inDouble(level) ? static_cast<float>(static_cast<double>(sample) * tap) : 0.0f + sample * tap;
}

// Columns of a plane, filtered for one output row: taps from the last to the first, rows from the top down.
float analysisColumn(Level level, const WaveletFilter& f, const float* src, int32_t step, int x, int y)
{
    float element = 0;
    for (int t = f.length() - 1; t >= 0; t--) {
        const auto sample = load<float>(at(src, step, x, 2 * y + f.anchor - t));
        const float tap = f.taps[static_cast<size_t>(t)];
        element = t == f.length() - 1 ? firstColumnStep(level, sample, tap) : columnStep(level, element, sample, tap);
    }
    return element;
}

// Groups of four products from the last tap, then the rest; up to seven in one run. elements[0] meets the last tap.
float rowInDouble(const WaveletFilter& f, const float* elements)
{
    const auto product = [&](int i) {
        return static_cast<double>(elements[i]) * f.taps[static_cast<size_t>(f.length() - 1 - i)];
    };
    double sum = 0;
    int i = 0;
    if (f.length() >= 8) {
        for (; f.length() - i >= 4; i += 4) {
            double group = 0;
            for (int k = 0; k < 4; k++) group += product(i + k);
            sum += group;
        }
    }
    for (; i < f.length(); i++) sum += product(i);
    return static_cast<float>(sum);
}

// From the first tap to the last.
float rowAround(const WaveletFilter& f, const float* elements)
{
    double sum = 0;
    for (int t = 0; t < f.length(); t++) {
        sum += static_cast<double>(elements[f.length() - 1 - t]) * f.taps[static_cast<size_t>(t)];
    }
    return static_cast<float>(sum);
}

// In a block: two running sums, of even and odd positions from the last tap, taken in pairs: beside an odd last one
// stands 0.0.
float rowInBlock(const WaveletFilter& f, const float* elements)
{
    float sums[2] = {0, 0};
    for (int i = 0; i < f.length() + f.length() % 2; i++) {
        const float tap = i < f.length() ? f.taps[static_cast<size_t>(f.length() - 1 - i)] : 0.0f;
        const float product = elements[i] * tap;
        sums[i & 1] += product;
    }
    return sums[0] + sums[1];
}

// Which of the outputs of a row of one block of columns are computed in blocks of four.
std::vector<bool> packedOutputs(const float* row, int width)
{
    std::vector<bool> packed(static_cast<size_t>(width));
    int x = 0;
    while (x < width && !onBoundary(row + x)) x++;
    for (; width - x > 4; x += 4) std::fill_n(packed.begin() + x, 4, true);
    return packed;
}

// The taps of one parity, first to last.
std::vector<float> phaseTaps(const WaveletFilter& f, int parity)
{
    std::vector<float> taps;
    for (size_t t = static_cast<size_t>(parity); t < f.taps.size(); t += 2) taps.push_back(f.taps[t]);
    return taps;
}

// One element of a column pass of a synthesis filter for output row n, onto what the element holds.
float synthesisColumn(Level level, const WaveletFilter& f, const Band& plane, int x, int n, const float* onto)
{
    const int parity = (n + f.anchor) & 1;
    const std::vector<float> taps = phaseTaps(f, parity);
    const int count = static_cast<int>(taps.size()), top = (n + f.anchor - parity) / 2;
    float element = onto ? *onto : 0;
    for (int k = count - 1; k >= 0; k--) {
        const auto sample = load<float>(at(plane.samples, plane.step, x, top - k));
        const bool first = k == count - 1 && !onto;
        const float tap = taps[static_cast<size_t>(k)];
        element = first ? firstColumnStep(level, sample, tap) : columnStep(level, element, sample, tap);
    }
    return element;
}

// A row pass of a synthesis filter for output column m; middle(x) is the element of source column x.
template <class Middle>
Sample synthesisRow(const WaveletFilter& f, const Middle& middle, int m, const Sample* onto, bool packed)
{
    const int parity = (m + f.anchor) & 1;
    const std::vector<float> taps = phaseTaps(f, parity);
    const int count = static_cast<int>(taps.size()), top = (m + f.anchor - parity) / 2;
    double sum = 0, size = onto ? std::fabs(onto->value) : 0;
    for (int k = count - 1; k >= 0; k--) {
        const double product = static_cast<double>(middle(top - k)) * taps[static_cast<size_t>(k)];
        sum += product;
        size += std::fabs(product);
    }
    if (onto) sum += onto->value;
    // Each of the products and additions rounds to 24 bits what is at most the sum of the sizes.
    const double freedom = packed ? (count + 2) * size / (1 << 23) + 1e-44 : 0;
    return {static_cast<float>(sum), static_cast<float>(freedom + (onto ? onto->freedom : 0))};
}

}

Borders analysisBorders(const WaveletFilter& f)
{
    return {f.length() - f.anchor - 1, f.anchor - 1};
}

Borders analysisBorders(const FilterPair& pair)
{
    const Borders low = analysisBorders(pair.low), high = analysisBorders(pair.high);
    return {std::max(low.left, high.left), std::max(low.right, high.right)};
}

Borders synthesisBorders(const WaveletFilter& f)
{
    return {(f.length() - f.anchor - 1) >> 1, (f.anchor + 1) / 2};
}

Plane forwardBand(Level level, const FilterPair& pair, bool highVertical, bool highHorizontal, const float* src,
                  int32_t srcStep, const float* dst, int32_t dstStep, ruxiSize dstRoiSize)
{
    const WaveletFilter& vertical = highVertical ? pair.high : pair.low;
    const WaveletFilter& horizontal = highHorizontal ? pair.high : pair.low;
    const Borders borders = analysisBorders(pair);
    Plane plane;
    for (int y = 0; y < dstRoiSize.height; y++) {
        std::vector<float> columns;   // from -borders.left
        for (int x = -borders.left; x < 2 * dstRoiSize.width + borders.right; x++) {
            columns.push_back(analysisColumn(level, vertical, src, srcStep, x, y));
        }
        std::vector<Sample> row;
        for (int block = 0; block < dstRoiSize.width; block += blockColumns) {
            const int width = std::min(blockColumns, dstRoiSize.width - block);
            const auto packed = packedOutputs(at(dst, dstStep, block, y), width);
            for (int j = 0; j < width; j++) {
                const int first = borders.left + 2 * (block + j) + horizontal.anchor - (horizontal.length() - 1);
                const float* const elements = columns.data() + first;
                const float value = inDouble(level)               ? rowInDouble(horizontal, elements)
                                    : packed[static_cast<size_t>(j)] ? rowInBlock(horizontal, elements)
                                                                   : rowAround(horizontal, elements);
                row.push_back({value, 0});
            }
        }
        plane.push_back(row);
    }
    return plane;
}

Plane inverseImage(Level level, const FilterPair& pair, const Bands& bands, ruxiSize srcRoiSize, const float* dst,
                   int32_t dstStep)
{
    Plane image;
    for (int n = 0; n < 2 * srcRoiSize.height; n++) {
        const auto middleOf = [&](const WaveletFilter& horizontal, const Band& low, const Band& high) {
            const Borders borders = synthesisBorders(horizontal);
            std::vector<float> elements;
            for (int x = -borders.left; x < srcRoiSize.width + borders.right; x++) {
                const float first = synthesisColumn(level, pair.low, low, x, n, nullptr);
                elements.push_back(synthesisColumn(level, pair.high, high, x, n, &first));
            }
            return [elements, borders](int x) { return elements.at(static_cast<size_t>(x + borders.left)); };
        };
        const auto middleLow = middleOf(pair.low, bands.lowLow, bands.highLow);
        const auto middleHigh = middleOf(pair.high, bands.lowHigh, bands.highHigh);
        std::vector<Sample> row;
        for (int m = 0; m < 2 * srcRoiSize.width; m++) {
            // Samples before the boundary, in each block of columns, are summed apart, as are all where there is none.
            const int block = m / (2 * blockColumns) * 2 * blockColumns;
            bool packed = false;
            for (int x = block; x <= m && x < block + 4; x++) packed = packed || onBoundary(at(dst, dstStep, x, n));
            packed = packed && !inDouble(level);
            const Sample low = synthesisRow(pair.low, middleLow, m, nullptr, packed);
            row.push_back(synthesisRow(pair.high, middleHigh, m, &low, packed));
        }
        image.push_back(row);
    }
    return image;
}

}
