// Aligned allocation: what is asked of malloc, where the block lies, what free is given.
#include <climits>
#include <vector>

#include "model/frame.h"
#include "ruxlib.h"
#include "support/allocation.h"
#include "support/call.h"
#include "support/levels.h"

namespace rux::test {
namespace {

constexpr int32_t untouched = 0x5A5A5A5A;

// Gives blocks at any distance from a 32-byte boundary, or none, and keeps what it was asked for and given back.
class Recorder : public StandInAllocator {
public:
    void* allocate(size_t bytes) override
    {
        requests.push_back(bytes);
        return next;
    }
    void release(void* block) override { released.push_back(block); }

    void* next = nullptr;
    std::vector<size_t> requests;
    std::vector<void*> released;
};

// An allocator as the tests call it; the images' are called with the height given.
struct Allocator {
    const char* name;
    int elementBytes;
    bool isImage;
    void* (*call)(int32_t width, int32_t height, int32_t* step);
};

#define VECTOR(name, bytes) \
    {#name, bytes, false, [](int32_t length, int32_t, int32_t*) -> void* { return call(::name, length); }}
#define IMAGE(name, bytes)  \
    {#name, bytes, true,    \
     [](int32_t width, int32_t height, int32_t* step) -> void* { return call(::name, width, height, step); }}
const Allocator allocators[] = {VECTOR(ruxsMalloc_8u, 1), VECTOR(ruxsMalloc_32f, 4), IMAGE(ruxiMalloc_8u_C1, 1),
                                IMAGE(ruxiMalloc_16s_C1, 2), IMAGE(ruxiMalloc_32f_C1, 4)};
#undef IMAGE
#undef VECTOR

// Calls with malloc answering `answer`, and checks everything that can be seen.
void expectRequest(const Allocator& allocator, int32_t width, int32_t height, void* answer, bool hasStepPointer = true)
{
    SCOPED_TRACE(std::string(allocator.name) + " " + std::to_string(width) + " x " + std::to_string(height));
    const model::Request expected = allocator.isImage
        ? model::imageRequest(allocator.elementBytes, width, height, hasStepPointer)
        : model::vectorRequest(allocator.elementBytes, width);
    Recorder recorder;
    recorder.next = answer;
    int32_t step = untouched;
    void* const block = allocator.call(width, height, hasStepPointer ? &step : nullptr);
    forgetBlocks();

    EXPECT_EQ(recorder.requests, expected.isMade ? std::vector<size_t>{expected.bytes} : std::vector<size_t>{});
    EXPECT_TRUE(recorder.released.empty());
    EXPECT_EQ(step, expected.storesStep ? expected.step : untouched);
    const auto raw = reinterpret_cast<uintptr_t>(answer);
    const bool succeeds = expected.isMade && answer;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block), succeeds ? model::blockIn(raw) : 0);
    if (!succeeds || !block) return;
    EXPECT_EQ(model::load<uintptr_t>(static_cast<uint8_t*>(block) - sizeof(void*)), raw);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 32, 0u);
}

}

class Memory : public LevelTest {};
RUX_AT_EACH_LEVEL(Memory);

const int32_t vectorLengths[] = {1, 2, 31, 32, 33, 1000, 0x1FFFFFFF, 0x20000000, 0x3FFFFFF6, 0x3FFFFFF7, 0x3FFFFFFD,
                                 0x3FFFFFFE, 0x3FFFFFFF, 0x40000000, 0x40000001, 0x5FFFFFFF, 0x60000000, 0x7FFFFFDC,
                                 INT_MAX, 0, -1, -5, INT_MIN};

struct ImageSize {
    int32_t width, height;
};
const ImageSize imageSizes[] = {
    {1, 1}, {31, 3}, {32, 3}, {33, 3}, {15, 2}, {16, 2}, {17, 2}, {7, 5}, {8, 5}, {9, 5}, {720, 576},
    // A stride that wraps to 0, to a negative number, to a small one.
    {INT_MAX, 1}, {INT_MAX, 2}, {INT_MAX - 31, 1}, {INT_MAX - 30, 1}, {0x40000000, 1}, {0x40000000, 3}, {0x40000001, 5},
    {0x20000000, 1}, {0x3FFFFFF8, 1}, {0x3FFFFFF9, 1}, {0x7FFFFFE1, 1}, {0x40000010, 7},
    // A product that wraps to 0, to a negative number, to a small one.
    {32, 0x08000000}, {32, 0x04000000}, {32, 0x03FFFFFF}, {32, 0x08000001}, {64, 0x04000001}, {0x10000, 0x10000},
    {0x10000, 0x10001}, {0x8000, 0x10000}, {3, INT_MAX}, {1, INT_MAX},
    // None.
    {0, 1}, {1, 0}, {0, 0}, {-1, 5}, {5, -1}, {INT_MIN, INT_MIN}, {INT_MIN, 1}, {1, INT_MIN}};

// What malloc is asked for, whether it has it or not.
TEST_P(Memory, asksForTheRightBytes)
{
    alignas(32) uint8_t area[128] = {};
    for (const Allocator& allocator : allocators) {
        for (void* answer : {static_cast<void*>(nullptr), static_cast<void*>(area)}) {
            if (allocator.isImage) {
                for (const auto& [width, height] : imageSizes) {
                    expectRequest(allocator, width, height, answer);
                    expectRequest(allocator, width, height, answer, false);
                }
            } else {
                for (int32_t length : vectorLengths) expectRequest(allocator, length, 0, answer);
            }
        }
    }
}

TEST_P(Memory, numbersOfTheContract)
{
    const uint32_t overhead = 32 + sizeof(void*);
    const auto asked = [](const Allocator& allocator, int32_t width, int32_t height, int32_t* step) {
        Recorder recorder;
        EXPECT_EQ(allocator.call(width, height, step), nullptr);
        return recorder.requests;
    };
    const auto& [vector8u, vector32f, image8u, image16s, image32f] = allocators;
    using Requests = std::vector<size_t>;
    EXPECT_EQ(asked(vector8u, 0, 0, nullptr), Requests{});
    EXPECT_EQ(asked(vector8u, -7, 0, nullptr), Requests{});
    EXPECT_EQ(asked(vector8u, 100, 0, nullptr), Requests{100 + overhead});
    EXPECT_EQ(asked(vector32f, 100, 0, nullptr), Requests{400 + overhead});
    EXPECT_EQ(asked(vector32f, 0x40000000, 0, nullptr), Requests{overhead});

    const auto stride = [&](const Allocator& allocator, int32_t width, int32_t height) {
        int32_t step = untouched;
        const auto requests = asked(allocator, width, height, &step);
        EXPECT_EQ(requests.size(), height < 1 ? 0u : 1u);
        return step;
    };
    EXPECT_EQ(stride(image8u, 1, 4), 32);
    EXPECT_EQ(stride(image8u, 32, 4), 32);
    EXPECT_EQ(stride(image8u, 33, 4), 64);
    EXPECT_EQ(stride(image16s, 16, 4), 32);
    EXPECT_EQ(stride(image32f, 9, 4), 64);
    EXPECT_EQ(stride(image8u, 33, 0), 0);
    EXPECT_EQ(asked(image8u, 33, 4, nullptr), Requests{});
    EXPECT_EQ(asked(image8u, 33, 0, nullptr), Requests{});
}

// Wherever the raw block lies, the caller's begins on a boundary, and the raw pointer stands before it.
TEST_P(Memory, alignsEveryRawBlock)
{
    alignas(32) uint8_t area[256] = {};
    for (const Allocator& allocator : allocators) {
        for (int offset = 0; offset < 64; offset++) expectRequest(allocator, 5, 1, area + offset);
    }
}

// The whole block is the caller's, from malloc to free, and either free serves every allocator.
TEST_P(Memory, blocksCanBeFilledAndFreedByEitherFamily)
{
    for (const Allocator& allocator : allocators) {
        for (const auto release : {::ruxsFree, ::ruxiFree}) {
            for (int32_t width = 1; width <= 140; width++) {
                const int32_t height = width % 4 + 1;
                int32_t step = width * allocator.elementBytes;
                void* const block = allocator.call(width, height, &step);
                ASSERT_NE(block, nullptr) << allocator.name;
                EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 32, 0u);
                const int32_t rows = allocator.isImage ? height : 1;
                std::memset(block, 0xA5, static_cast<size_t>(step) * static_cast<size_t>(rows));
                EXPECT_EQ(outstandingBlocks(), 1);
                call(release, block);
                EXPECT_EQ(outstandingBlocks(), 0);
            }
        }
    }
}

TEST_P(Memory, freesTheRawPointer)
{
    alignas(32) uint8_t area[128] = {};
    for (const auto release : {::ruxsFree, ::ruxiFree}) {
        for (int offset : {0, 1, 4, 8, 16, 24, 27, 31}) {
            Recorder recorder;
            recorder.next = area + offset;
            uint8_t* const block = call(::ruxsMalloc_8u, 40);
            call(release, block);
            EXPECT_EQ(recorder.released, std::vector<void*>{area + offset});
        }
    }
}

TEST_P(Memory, freeOfNullDoesNothing)
{
    Recorder recorder;
    void* const none = nullptr;
    call(::ruxsFree, none);
    call(::ruxiFree, none);
    EXPECT_TRUE(recorder.released.empty());
}

TEST_P(Memory, refusalGivesNullAndKeepsTheStride)
{
    for (const Allocator& allocator : allocators) {
        forEachRefusal(1, [&](bool refused) {
            int32_t step = untouched;
            void* const block = allocator.call(9, 3, &step);
            EXPECT_EQ(block == nullptr, refused) << allocator.name;
            const int32_t stride = (9 * allocator.elementBytes + 31) / 32 * 32;
            EXPECT_EQ(step, allocator.isImage ? stride : untouched);
            call(::ruxsFree, block);
        });
    }
}

// Only a level at a time is bound, but blocks do not know which.
TEST(MemoryOfAnyLevel, isFreedAtAnyOther)
{
    for (Level from : levels) {
        for (Level to : levels) {
            for (const auto release : {::ruxsFree, ::ruxiFree}) {
                if (!processorHas(from) || !processorHas(to)) continue;
                forgetBlocks();
                ASSERT_TRUE(bindLevel(from));
                float* const block = call(::ruxsMalloc_32f, 1000);
                ASSERT_TRUE(bindLevel(to));
                call(release, static_cast<void*>(block));
                EXPECT_EQ(outstandingBlocks(), 0) << from << " to " << to;
            }
        }
    }
}

}
