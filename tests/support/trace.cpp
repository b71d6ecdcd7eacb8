#include "support/trace.h"

#ifndef _WIN32
#include <csignal>
#include <ucontext.h>
#endif

namespace rux::test {

#ifdef _WIN32

Trace::Trace(int limit) : limit(limit) {}
Trace::~Trace() = default;

bool Trace::isOn()
{
    return false;
}

#else

namespace {

thread_local Trace* current = nullptr;
struct sigaction before;

#ifdef __x86_64__
constexpr int instructionPointer = REG_RIP;
#else
constexpr int instructionPointer = REG_EIP;
#endif

bool isPrefix(uint8_t byte)
{
    const bool rex = sizeof(void*) == 8 && byte >= 0x40 && byte <= 0x4F;
    return rex || byte == 0x66 || byte == 0xF2 || byte == 0xF3;
}

// Counts the instruction that comes next.
void count(Trace& trace, const uint8_t* code)
{
    bool plain = true, sixteen = false;   // without a prefix that makes an MMX opcode one of the vector unit
    for (; isPrefix(*code); code++) {
        if (*code == 0x66) sixteen = true;
        if (*code == 0x66 || *code == 0xF2 || *code == 0xF3) plain = false;
    }
    trace.steps++;
    if (code[0] != 0x0F) return;
    const uint8_t opcode = code[1];
    if ((opcode == 0xE7 || opcode == 0xC3) && plain) trace.streaming8++;
    else if ((opcode == 0xE7 && sixteen) || opcode == 0x2B) trace.streaming16++;
    else if (opcode == 0xAE && code[2] >= 0xF8 && plain) trace.fences++;
    else if (opcode == 0x77) trace.clearedMmx++;
    else if (plain && ((opcode >= 0x60 && opcode <= 0x7F) || opcode >= 0xD1)) trace.mmx++;
}

// The signal comes before each instruction of the function. Beyond the limit the trap flag goes.
void onStep(int, siginfo_t*, void* context)
{
    auto* const registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    if (current && current->goesOn()) count(*current, reinterpret_cast<const uint8_t*>(registers[instructionPointer]));
    else registers[REG_EFL] &= ~static_cast<greg_t>(Trace::trapFlag);
}

}

Trace::Trace(int limit) : limit(limit)
{
    struct sigaction action = {};
    action.sa_sigaction = onStep;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGTRAP, &action, &before);
    current = this;
}

Trace::~Trace()
{
    current = nullptr;
    sigaction(SIGTRAP, &before, nullptr);
}

bool Trace::isOn()
{
    return current != nullptr;
}

#endif

}
