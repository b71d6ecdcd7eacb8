// Error diffusion in a wave: each lane is a row of its own, three columns behind the lane before it, so that all
// neighbours above a sample are done when it is reached.
//
//   step s:   lane 0 at column s of row r, lane 1 at column s - 3 of row r + 1, lane 2 at column s - 6 of row r + 2 ...
//
// A wave is a run of rows; the rows of the three channels stand in one sequence. Every sample is computed as it would
// be alone: the wave changes the order of the work and nothing else.
#pragma once

#include "arith/byte_floats.h"
#include "colour/reduce_bits_sse.h"

namespace rux::RUX_LEVEL {
namespace {

// The level's: the low byte of each lane is that of the truncated value.
__m128 bytesOfLevels(__m128 levels);

constexpr int waveVectors = 4;
constexpr int waveLanes = 4 * waveVectors;
constexpr int lag = 3;

// What the wave remembers of a step: the errors of all lanes, and before them those of the two rows above the wave, as
// if lanes -2 and -1 had done them.
constexpr int firstLane = 4;
constexpr int historyPitch = firstLane + waveLanes;
constexpr int historyDepth = 8;    // two rows up and two columns to the left are 8 steps back
constexpr int historyRoom = 64;    // steps until the last ones are moved to the front

struct WaveRows {
    const uint8_t* src[waveLanes];
    uint8_t* dst[waveLanes];
    int32_t noiseOffset[waveLanes];
    int count;
};

// The last two rows of errors of the wave before, and then of this one. Where it writes, nothing is read any more.
struct CarriedRows {
    float* up;
    float* upTwo;
    int32_t width;

    static float at(const float* row, int32_t x, int32_t width) { return x >= 0 && x < width ? row[x] : 0.0f; }

    template <typename Kernel>
    void enter(float* step, int32_t s) const
    {
        step[firstLane - 1] = at(up, s + lag, width);
        if (Kernel::rowsAbove == 2) step[firstLane - 2] = at(upTwo, s + 2 * lag, width);
    }

    template <typename Kernel>
    void leave(const float* step, int32_t s) const
    {
        constexpr int last = waveLanes - 1;
        const int32_t x = s - last * lag;
        if (x >= 0 && x < width) up[x] = step[firstLane + last];
        if (Kernel::rowsAbove == 2 && x + lag >= 0 && x + lag < width) upTwo[x + lag] = step[firstLane + last - 1];
    }
};

// The errors left of the lanes of a vector, one and two columns away.
struct LeftErrors {
    __m128 one, two;
};

struct WaveStep {
    float* now;   // the step's place in the history
    int32_t s;

    // The errors of a vector of lanes, so many steps ago and so many lanes before.
    __m128 errors(int vector, int steps, int lanes) const
    {
        return _mm_loadu_ps(now - steps * historyPitch + firstLane + 4 * vector - lanes);
    }
    LeftErrors left(int vector) const { return {errors(vector, 1, 0), errors(vector, 2, 0)}; }
};

// One lane up is lag columns ahead: column x + i of the row above was reached lag - i steps ago.
template <typename Kernel>
inline __m128 diffusedSum(const WaveStep& step, int vector, LeftErrors left)
{
    const auto up = [&](int i) { return step.errors(vector, lag - i, 1); };
    const auto upTwo = [&](int i) { return step.errors(vector, 2 * lag - i, 2); };
    const __m128 sum = Kernel::withLeft(Kernel::fromAbove(up, upTwo), left.two, left.one);
    return _mm_mul_ps(sum, all(Kernel::scale));
}

struct ReducedLanes {
    __m128 bytes;
    __m128 errors;
};

// Values of 255 and more and those below 0 end the diffusion.
inline ReducedLanes reduceValues(const Stairs& stairs, __m128 values, __m128 thresholds)
{
    const Level level = levelOf(stairs, values, thresholds);
    const __m128 isHigh = _mm_cmpge_ps(values, all(255.0f));
    const __m128 isLow = _mm_cmplt_ps(values, _mm_setzero_ps());
    return {_mm_andnot_ps(isLow, _mm_or_ps(isHigh, bytesOfLevels(level.value))),
            _mm_andnot_ps(_mm_or_ps(isHigh, isLow), level.error)};
}

// The work on one wave.
template <typename Kernel, bool noisy>
struct Wave {
    Stairs stairs;
    __m128 threshold;   // without noise
    const NoiseTables* noise;
    const WaveRows& rows;
    int32_t width;

    // Lanes that stand beside their row have a sample of 0, and no error.
    bool isAtWork(int lane, int32_t s) const
    {
        return lane < rows.count && s >= lag * lane && s - lag * lane < width;
    }

    template <bool wholeWave>
    const float* sample(int lane, int32_t s) const
    {
        if (!wholeWave && !isAtWork(lane, s)) return byteFloats;
        return byteFloats + rows.src[lane][ptrdiff_t(s - lag * lane) * 3];
    }

    template <bool wholeWave>
    const float* noiseValue(int lane, int32_t s) const
    {
        if (!wholeWave && !isAtWork(lane, s)) return byteFloats;
        const int32_t x = s - lag * lane;
        return noise->entry(x, rows.noiseOffset[lane] + x);
    }

    // Returns the errors of the vector's lanes.
    template <bool wholeWave>
    [[gnu::always_inline]] __m128 advance(WaveStep step, int vector, LeftErrors left) const
    {
        const int lane = 4 * vector;
        const int32_t s = step.s;
        const __m128 samples = fourFloats(sample<wholeWave>(lane, s), sample<wholeWave>(lane + 1, s),
                                          sample<wholeWave>(lane + 2, s), sample<wholeWave>(lane + 3, s));
        __m128 thresholds = threshold;
        if (noisy)
            thresholds = fourFloats(noiseValue<wholeWave>(lane, s), noiseValue<wholeWave>(lane + 1, s),
                                    noiseValue<wholeWave>(lane + 2, s), noiseValue<wholeWave>(lane + 3, s));
        const ReducedLanes reduced =
            reduceValues(stairs, _mm_add_ps(samples, diffusedSum<Kernel>(step, vector, left)), thresholds);

        float* const errors = step.now + firstLane + lane;
        _mm_store_ps(errors, reduced.errors);
        alignas(16) uint32_t bytes[4];
        _mm_store_ps(reinterpret_cast<float*>(bytes), reduced.bytes);
        for (int i = 0; i < 4; ++i) {
            if (wholeWave || isAtWork(lane + i, s))
                rows.dst[lane + i][ptrdiff_t(s - lag * (lane + i)) * 3] = static_cast<uint8_t>(bytes[i]);
            else
                errors[i] = 0;
        }
        return reduced.errors;
    }

    // Steps of a whole wave; the errors to the left stay in registers.
    [[gnu::noinline]] void advanceWhole(WaveStep step, int32_t end, const CarriedRows& carried) const
    {
        LeftErrors left0 = step.left(0);
        LeftErrors left1 = step.left(1);
        LeftErrors left2 = step.left(2);
        LeftErrors left3 = step.left(3);
        for (; step.s < end; ++step.s, step.now += historyPitch) {
            left0 = {advance<true>(step, 0, left0), left0.one};
            left1 = {advance<true>(step, 1, left1), left1.one};
            left2 = {advance<true>(step, 2, left2), left2.one};
            left3 = {advance<true>(step, 3, left3), left3.one};
            carried.enter<Kernel>(step.now, step.s);
            carried.leave<Kernel>(step.now, step.s);
        }
    }

    [[gnu::noinline]] void advancePart(const WaveStep& step, const CarriedRows& carried) const
    {
        for (int vector = 0; 4 * vector < rows.count; ++vector) advance<false>(step, vector, step.left(vector));
        carried.enter<Kernel>(step.now, step.s);
        if (rows.count == waveLanes) carried.leave<Kernel>(step.now, step.s);
    }

    [[gnu::noinline]] void run(const CarriedRows& carried) const
    {
        alignas(16) float history[(historyDepth + historyRoom) * historyPitch];
        constexpr int kept = historyDepth * historyPitch;
        for (int i = 0; i < kept; ++i) history[i] = 0;
        for (int32_t s = -historyDepth; s < 0; ++s)
            carried.enter<Kernel>(history + (s + historyDepth) * historyPitch, s);

        constexpr int32_t wholeFrom = lag * (waveLanes - 1);
        const int32_t wholeEnd = rows.count == waveLanes ? width : 0;
        const int32_t end = width + lag * (rows.count - 1);
        int32_t room = historyRoom;
        WaveStep step = {history + kept, 0};
        while (step.s < end) {
            if (room == 0) {
                for (int i = 0; i < kept; ++i) history[i] = step.now[i - kept];
                step.now = history + kept;
                room = historyRoom;
            }
            int32_t count = 1;
            if (step.s >= wholeFrom && step.s < wholeEnd) {
                count = wholeEnd - step.s < room ? wholeEnd - step.s : room;
                advanceWhole(step, step.s + count, carried);
            } else {
                advancePart(step, carried);
            }
            step = {step.now + count * historyPitch, step.s + count};
            room -= count;
        }
    }
};

template <typename Kernel, bool noisy>
void diffuseWaves(const ReducedImages& images, int32_t top, const NoiseTables* noise, float* errors)
{
    const Staircase staircase(top);
    const int32_t width = images.roiSize.width;
    const int32_t height = images.roiSize.height;
    const CarriedRows carried = {errors, errors + width, width};
    WaveRows rows;
    const Wave<Kernel, noisy> wave = {Stairs(staircase), all(0.5f * staircase.step), noise, rows, width};
    rows.count = 0;
    for (int channel = 0; channel < 3; ++channel) {
        for (int32_t y = 0; y < height; ++y) {
            rows.src[rows.count] = images.srcRow(y) + channel;
            rows.dst[rows.count] = images.dstRow(y) + channel;
            rows.noiseOffset[rows.count] = 2 * y;
            if (++rows.count < waveLanes) continue;
            wave.run(carried);
            rows.count = 0;
        }
    }
    if (rows.count > 0) wave.run(carried);
}

template <typename Kernel>
void diffuseErrors(const ReducedImages& images, int32_t top, const NoiseTables* noise, float* rows)
{
    if (noise)
        diffuseWaves<Kernel, true>(images, top, noise, rows);
    else
        diffuseWaves<Kernel, false>(images, top, noise, rows);
}

}
}
