// The accuracy of the inverse DCT as IEEE 1180-1990 measures it: random blocks of samples are transformed forward in
// double precision and rounded; the inverse at hand is held against one in double precision. The figures are printed,
// and held where they are.
#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <vector>

#include "ruxlib.h"
#include "support/call.h"
#include "support/levels.h"

namespace rux::test {
namespace {

// What the samples of a trial are drawn from: -low to high, times the sign.
struct Range {
    int low, high, sign;
};

// The standard's generator.
class Generator {
public:
    int next(const Range& range)
    {
        state = state * 1103515245 + 12345;
        const double fraction = (state & 0x7ffffffe) / static_cast<double>(0x7fffffff);
        return static_cast<int>(fraction * (range.low + range.high + 1)) - range.low;
    }

private:
    uint32_t state = 1;
};

using Real = std::array<double, 64>;
using Block = std::array<int16_t, 64>;

// basis[8 * u + x] = C(u) / 2 * cos((2x + 1) u pi / 16), without the C library's cosine, which differs between systems.
Real basisFunctions()
{
    static constexpr double cosines[] = {   // of k pi / 16
        1, 0.98078528040323044913, 0.92387953251128675613, 0.83146961230254523708, 0.70710678118654752440,
        0.55557023301960222474, 0.38268343236508977173, 0.19509032201612826785, 0};
    const auto cosine = [](size_t k) {   // the rest of the circle, by symmetry
        k %= 32;
        if (k > 16) k = 32 - k;
        return k > 8 ? -cosines[16 - k] : cosines[k];
    };
    Real basis;
    for (size_t u = 0; u < 8; u++) {
        for (size_t x = 0; x < 8; x++) basis[8 * u + x] = 0.5 * (u ? cosine((2 * x + 1) * u) : cosines[4]);
    }
    return basis;
}

// Both directions: matrix * block * matrix transposed, rounded and clipped.
Block transformed(const Real& matrix, const Block& block, int low, int high)
{
    Real half;
    Block result;
    for (size_t i = 0; i < 8; i++) {
        for (size_t x = 0; x < 8; x++) {
            double sum = 0;
            for (size_t k = 0; k < 8; k++) sum += matrix[8 * i + k] * block[8 * k + x];
            half[8 * i + x] = sum;
        }
    }
    for (size_t i = 0; i < 8; i++) {
        for (size_t j = 0; j < 8; j++) {
            double sum = 0;
            for (size_t k = 0; k < 8; k++) sum += half[8 * i + k] * matrix[8 * j + k];
            result[8 * i + j] = static_cast<int16_t>(std::clamp<double>(std::floor(sum + 0.5), low, high));
        }
    }
    return result;
}

struct Measured {
    Block coefficients, reference;
};

std::vector<Measured> blocksOf(const Range& range)
{
    const Real forward = basisFunctions();
    Real inverse;
    for (size_t u = 0; u < 8; u++) {
        for (size_t x = 0; x < 8; x++) inverse[8 * x + u] = forward[8 * u + x];
    }
    Generator generator;
    std::vector<Measured> blocks(10000);
    for (Measured& block : blocks) {
        Block samples;
        for (int16_t& sample : samples) sample = static_cast<int16_t>(range.sign * generator.next(range));
        block.coefficients = transformed(forward, samples, -2048, 2047);
        block.reference = transformed(inverse, block.coefficients, -256, 255);
    }
    return blocks;
}

// Errors of one place of the block and of all; the means are magnitudes.
struct Accuracy {
    double peak, placeSquare, square, placeMean, mean;

    static constexpr const char* names[] = {"peak error", "mean square error of a place", "mean square error",
                                            "mean error of a place", "mean error"};
    std::array<double, 5> figures() const { return {peak, placeSquare, square, placeMean, mean}; }
};

Accuracy accuracyOver(const std::vector<Measured>& blocks)
{
    std::array<int, 64> sums = {}, squares = {};
    int peak = 0;
    for (const Measured& measured : blocks) {
        Block result;
        EXPECT_EQ(call(ruxiDCT8x8Inv_16s_C1R, measured.coefficients.data(), result.data(), 16), 0);
        for (size_t i = 0; i < 64; i++) {
            const int error = std::clamp<int>(result[i], -256, 255) - measured.reference[i];
            peak = std::max(peak, std::abs(error));
            sums[i] += error;
            squares[i] += error * error;
        }
    }
    const double count = static_cast<double>(blocks.size());
    Accuracy accuracy = {static_cast<double>(peak), 0, 0, 0, 0};
    for (size_t i = 0; i < 64; i++) {
        accuracy.placeSquare = std::max(accuracy.placeSquare, squares[i] / count);
        accuracy.square += squares[i] / count / 64;
        accuracy.placeMean = std::max(accuracy.placeMean, std::abs(sums[i] / count));
        accuracy.mean += sums[i] / count / 64;
    }
    accuracy.mean = std::abs(accuracy.mean);
    return accuracy;
}

// A trial, and figures just above those that px and the other levels measure in it. The standard's own bounds are 1,
// 0.06, 0.02, 0.015 and 0.0015.
struct Trial {
    Range range;
    Accuracy plain, vector;
};

std::ostream& operator<<(std::ostream& stream, const Trial& trial)
{
    const Range& range = trial.range;
    return stream << (range.sign < 0 ? "negated " : "") << "[" << -range.low << ", " << range.high << "]";
}

const Trial trials[] = {
    {{256, 255, 1}, {1, 0.0168, 0.00980, 0.00241, 0.000191}, {1, 0.0162, 0.0132, 0.00241, 0.0000454}},
    {{5, 5, 1}, {1, 0.0126, 0.00860, 0.00261, 0.000229}, {1, 0.0154, 0.0129, 0.00271, 0.0000798}},
    {{300, 300, 1}, {1, 0.0141, 0.00841, 0.00261, 0.0000454}, {1, 0.0132, 0.0111, 0.00251, 0.00000783}},
    {{256, 255, -1}, {1, 0.0167, 0.00976, 0.00221, 0.0000360}, {1, 0.0161, 0.0131, 0.00231, 0.000252}},
    {{5, 5, -1}, {1, 0.0130, 0.00859, 0.00201, 0.000160}, {1, 0.0162, 0.0130, 0.00261, 0.000174}},
    {{300, 300, -1}, {1, 0.0132, 0.00839, 0.00231, 0.0000657}, {1, 0.0140, 0.0112, 0.00401, 0.000202}},
};

class DctAccuracy : public testing::TestWithParam<Trial> {};

TEST_P(DctAccuracy, isWhatItWas)
{
    const Trial& trial = GetParam();
    const auto blocks = blocksOf(trial.range);
    for (const Level level : levels) {
        if (!bindLevel(level)) continue;
        const auto limits = (level == px ? trial.plain : trial.vector).figures();
        const auto figures = accuracyOver(blocks).figures();
        std::cout << trial << " at " << level;
        for (size_t i = 0; i < figures.size(); i++) std::cout << ", " << Accuracy::names[i] << " " << figures[i];
        std::cout << std::endl;
        for (size_t i = 0; i < figures.size(); i++) {
            EXPECT_LE(figures[i], limits[i]) << Accuracy::names[i] << " at " << level;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ranges, DctAccuracy, testing::ValuesIn(trials));

}
}
