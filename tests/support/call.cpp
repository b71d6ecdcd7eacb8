#include "support/call.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cinttypes>
#include <cstdio>

#include "support/allocation.h"
#include "support/call_record.h"
#include "support/note.h"
#include "support/trace.h"

extern "C" void ruxTestTrampoline(uintptr_t* record);

namespace rux::test::detail {
namespace {

constexpr size_t canaryWords = 16;
#ifdef __x86_64__
constexpr const char* keptNames[] = {"rbx", "rbp", "r12", "r13", "r14", "r15"};
#else
constexpr const char* keptNames[] = {"ebx", "ebp", "esi", "edi"};
#endif
constexpr size_t keptCount = sizeof keptNames / sizeof *keptNames;

std::atomic<uint32_t> calls{0};

uintptr_t canary(uint64_t garbage, size_t i)
{
    return static_cast<uintptr_t>((garbage ^ (i + 1)) * 0x9E3779B97F4A7C15u);
}

struct Record {
    uintptr_t words[RECORD_SIZE] = {};
    std::vector<uintptr_t> stack;   // the arguments, and the canary above them
    size_t argumentWords;
    uint64_t garbage;

    Record(void (*function)(), const ArgumentWords& arguments, const HostState& state, size_t shift)
        : stack(arguments.stack), argumentWords(stack.size()), garbage(nextGarbage())
    {
        for (size_t i = 0; i < canaryWords; i++) stack.push_back(canary(garbage, i));
        words[RECORD_FUNCTION] = reinterpret_cast<uintptr_t>(function);
        words[RECORD_STACK] = reinterpret_cast<uintptr_t>(stack.data());
        words[RECORD_STACK_WORDS] = stack.size();
        words[RECORD_STACK_SHIFT] = shift;
        words[RECORD_X87_CONTROL] = state.x87Control;
        words[RECORD_MXCSR] = state.mxcsr;
        words[RECORD_HAS_MMX] = __builtin_cpu_supports("mmx") != 0;
        words[RECORD_HAS_SSE] = processorHasVectorState();
        words[RECORD_MMX_IN_USE] = state.mmx && words[RECORD_HAS_MMX];
        words[RECORD_CALL_FLAGS] = 0x202;
        words[RECORD_GARBAGE] = static_cast<uintptr_t>(garbage);
        for (size_t i = 0; i < keptCount; i++) words[RECORD_KEPT + i] = kept(i);
#ifdef __x86_64__
        std::memcpy(words + RECORD_INTEGER, arguments.integer, sizeof arguments.integer);
        std::memcpy(words + RECORD_VECTOR, arguments.vector, sizeof arguments.vector);
#endif
    }

    uintptr_t kept(size_t i) const { return canary(garbage, 100 + i); }
    uint32_t environment(int i) const
    {
        uint32_t field;
        std::memcpy(&field, reinterpret_cast<const char*>(words + RECORD_X87_ENVIRONMENT) + 4 * i, sizeof field);
        return field;
    }
};

std::string text(const char* format, uintptr_t a, uintptr_t b)
{
    char line[160];
    std::snprintf(line, sizeof line, format, static_cast<uint64_t>(a), static_cast<uint64_t>(b));
    return line;
}

// One line for each thing that the function did not leave as its convention asks; empty when all is well.
std::string complaints(const Record& record, Convention convention)
{
    const uintptr_t* const words = record.words;
    std::string lines;
    for (size_t i = 0; i < keptCount; i++) {
        if (words[RECORD_KEPT + i] == record.kept(i)) continue;
        lines += std::string(keptNames[i]) + text(" was %" PRIX64 " and is %" PRIX64 "\n", record.kept(i),
                                                  words[RECORD_KEPT + i]);
    }
    const size_t popped = convention == Convention::calleePops ? record.argumentWords * sizeof(uintptr_t) : 0;
    const uintptr_t moved = words[RECORD_STACK_POINTER_AFTER] - words[RECORD_STACK_POINTER];
    if (moved != popped) {
        lines += text("the stack pointer moved by %" PRId64 " bytes, not %" PRId64 "\n", moved, popped);
    }
    for (size_t i = 0; i < canaryWords; i++) {
        if (record.stack[record.argumentWords + i] == canary(record.garbage, i)) continue;
        lines += text("word %" PRId64 " above the arguments was overwritten with %" PRIX64 "\n", i,
                      record.stack[record.argumentWords + i]);
    }
    const uint32_t control = record.environment(0) & 0xFFFF, tags = record.environment(2) & 0xFFFF;
    if (control != words[RECORD_X87_BEFORE]) {
        lines += text("the x87 control word was %04" PRIX64 " and is %04" PRIX64 "\n", words[RECORD_X87_BEFORE],
                      control);
    }
    if (tags != 0xFFFF) lines += text("the x87 stack is not empty (tag word %04" PRIX64 "): MMX state left\n", tags, 0);
    if ((words[RECORD_MXCSR_BEFORE] ^ words[RECORD_MXCSR_AFTER]) & ~static_cast<uintptr_t>(0x3F)) {
        lines += text("MXCSR was %04" PRIX64 " and is %04" PRIX64 "\n", words[RECORD_MXCSR_BEFORE],
                      words[RECORD_MXCSR_AFTER]);
    }
    if (words[RECORD_FLAGS] & 0x400) lines += "the direction flag is set\n";
    return lines;
}

}

uint64_t nextGarbage()
{
    const uint64_t mixed = (calls.fetch_add(1, std::memory_order_relaxed) + 1) * 0x9E3779B97F4A7C15u;
    return mixed ^ mixed >> 29;
}

uintptr_t callWatched(void (*function)(), ArgumentWords& arguments, Convention convention, const HostState& state)
{
#ifdef __x86_64__
    const size_t shift = 0;
#else
    const size_t shift = 4 * (calls.load(std::memory_order_relaxed) / 2 % 4);   // two steps a call
#endif
    Record record(function, arguments, state, shift);
    if (Trace::isOn()) record.words[RECORD_CALL_FLAGS] |= Trace::trapFlag;
    {
        InsideLibrary inside;
        ruxTestTrampoline(record.words);
    }
    const std::string lines = complaints(record, convention);
    if (!lines.empty()) ADD_FAILURE() << "after a call under " << state.describe() << ":\n" << lines << Note::all();
    return record.words[RECORD_RESULT];
}

uintptr_t callPlain(void (*function)(), ArgumentWords& arguments)
{
    Record record(function, arguments, HostState(), 0);
    ruxTestTrampoline(record.words);
    return record.words[RECORD_RESULT];
}

}
