// Many threads at once, each on buffers of its own: every result is what one thread alone gets. The thread sanitizer
// runs this test too.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "ruxlib.h"
#include "support/levels.h"
#include "support/random.h"

namespace rux::test {

class Threads : public LevelTest {};
RUX_AT_EACH_LEVEL(Threads);

// One frame's work over several families: bytes, floats on the floating-point stack and in vectors, MMX, reductions,
// allocation.
static std::vector<uint8_t> work(uint64_t seed)
{
    constexpr int32_t width = 83, height = 29, step = 96;
    constexpr ruxiSize roi = {width, height};
    Random random(seed);
    std::vector<uint8_t> a(step * height), b(step * height);
    fillBytes(random, a.data(), a.size());
    fillBytes(random, b.data(), b.size());
    std::vector<float> sums(step * height, 1.5f), other(step * height, 0.25f);

    ruxiCopy_8u_C1MR(a.data(), step, b.data(), step, roi, a.data(), step);
    ruxiAdd_8u32f_C1IR(a.data(), step, sums.data(), step * 4, roi);
    ruxiAddWeighted_8u32f_C1IR(b.data(), step, sums.data(), step * 4, roi, 0.3f);
    ruxiMul_32f_C1IR(other.data(), step * 4, sums.data(), step * 4, roi);
    ruxiDivC_32f_C1IR(3.0f, sums.data(), step * 4, roi);

    int32_t blockStep = 0;
    uint8_t* const block = ruxiMalloc_8u_C1(width, height, &blockStep);
    ruxiSet_8u_C1R(static_cast<uint8_t>(seed), block, blockStep, roi);
    ruxiCopy_8u_C1R(block, blockStep, b.data(), step, {width / 2, height});
    ruxiFree(block);

    double sum = 0;
    ruxiSum_8u_C1R(b.data(), step, roi, &sum);
    double norm = 0;
    ruxiNormDiff_L1_32f_C1R(sums.data(), step * 4, other.data(), step * 4, roi, &norm, 2);

    std::vector<uint8_t> result = b;
    const auto append = [&](const void* from, size_t bytes) {
        const auto* const first = static_cast<const uint8_t*>(from);
        result.insert(result.end(), first, first + bytes);
    };
    append(sums.data(), sums.size() * sizeof(float));
    append(&sum, sizeof sum);
    append(&norm, sizeof norm);
    return result;
}

TEST_P(Threads, workOnBuffersOfTheirOwn)
{
    constexpr int count = 8, rounds = 50;
    std::vector<std::vector<uint8_t>> expected;
    for (int i = 0; i < count; i++) expected.push_back(work(static_cast<uint64_t>(i)));

    std::vector<int> right(count);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; i++) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < rounds; round++) right[i] += work(static_cast<uint64_t>(i)) == expected[i];
        });
    }
    for (auto& thread : threads) thread.join();
    for (const int each : right) EXPECT_EQ(each, rounds);
}

}
