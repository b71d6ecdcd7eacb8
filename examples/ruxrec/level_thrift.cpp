#include "level_thrift.h"

#include <cstdlib>

int LevelThrift::reconstructed(int place, int magnitude) const
{
    if (magnitude == 0) return 0;
    return weights_ ? magnitude * scale_ * weights_[place] / 16 : (2 * magnitude + 1) * scale_ / 2;
}

// A non-intra block's first coefficient has a short code for a level of 1.
int LevelThrift::pairLength(int run, int scanPlace, int magnitude) const
{
    return scanPlace == 0 && magnitude == 1 ? 2 : table_.length(run, magnitude);
}

void LevelThrift::apply(const int16_t* coefficients, int16_t* levels) const
{
    int places[64];   // of the levels that are not zero, in scan order
    int count = 0;
    for (int k = first(); k < 64; ++k)
        if (levels[zigzagScan[size_t(k)]] != 0) places[count++] = k;

    int next = 64;   // the place of the level behind, 64 for none
    for (int index = count - 1; index >= 0; --index) {
        const int k = places[index], before = index > 0 ? places[index - 1] : first() - 1;
        const int place = zigzagScan[size_t(k)];
        const int nextMagnitude = next < 64 ? std::abs(levels[zigzagScan[size_t(next)]]) : 0;
        const int run = k - before - 1;
        const int magnitude = std::abs(levels[place]);
        int saved = pairLength(run, k, magnitude);
        if (magnitude > 1)
            saved -= pairLength(run, k, magnitude - 1);
        else if (next < 64)
            saved -= table_.length(next - before - 1, nextMagnitude) - table_.length(next - k - 1, nextMagnitude);
        const int wanted = std::abs(coefficients[place]);
        const int64_t error = wanted - reconstructed(place, magnitude);
        const int64_t lowered = wanted - reconstructed(place, magnitude - 1);
        if (costOf(lowered * lowered, 0, worthOfBit_) < costOf(error * error, saved, worthOfBit_))
            levels[place] = int16_t(levels[place] > 0 ? magnitude - 1 : 1 - magnitude);
        if (levels[place] != 0) next = k;
    }
}

int LevelThrift::bits(const int16_t* levels) const
{
    int total = table_.endOfBlock().length;
    int run = 0;
    for (int k = first(); k < 64; ++k) {
        const int magnitude = std::abs(levels[zigzagScan[size_t(k)]]);
        if (magnitude == 0) {
            ++run;
            continue;
        }
        total += pairLength(run, k, magnitude);
        run = 0;
    }
    return total;
}

int64_t LevelThrift::distortion(const int16_t* coefficients, const int16_t* levels) const
{
    int64_t total = 0;
    for (int place = first(); place < 64; ++place) {
        const int64_t difference = std::abs(coefficients[place]) - reconstructed(place, std::abs(levels[place]));
        total += difference * difference;
    }
    return total;
}
