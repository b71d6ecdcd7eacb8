// The guard is a signal handler, and handlers belong to the whole process: threads of the host that know nothing of
// the load share it for some microseconds. So it holds no data and goes by the place of the interruption alone.
//
//   fault in a trial           the trial's thread goes on at ruxTrialFaulted
//   any other fault            nothing: the instruction faults again, and again, until the earlier handler is back
//   signal sent by somebody    sent again, with the same particulars, to the thread that got it, until the earlier
//                              handler is back
//
// On the trial's thread all signals wait (the mask is closed) but in the window of trial.S, which opens the mask for
// the guard's four: a fault whose signal is blocked would end the process. A signal that somebody sends into the
// window must not be blocked there, for the same reason: it ends the window, and once it has been served the trial
// starts anew.
//
// SIGILL, SIGSEGV, SIGBUS and SIGFPE are all that a trial instruction can raise: unknown or disabled, refused to user
// code, its page lost, and an exception of the host's x87 code still pending.
//
// What remains: the kernel keeps one pending signal of a kind for a thread, so that one sent to the trial's thread at
// the instant of a trial's fault merges with it; and a thread that forks in these microseconds gives the child the
// guard's handlers until it calls exec.
#include "frame/trial.h"

#include <errno.h>
#include <signal.h>
#include <string.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

extern "C" {

extern const char ruxTrialBegin[], ruxTrialEnd[], ruxTrialFaulted[];
extern const char ruxWindowBegin[], ruxWindowEnd[], ruxWindowInterrupted[];
int32_t ruxTrialWindow(int32_t trial, const uint64_t* openMask, const uint64_t* closedMask);

}

namespace rux {
namespace {

constexpr int signals[] = {SIGILL, SIGSEGV, SIGBUS, SIGFPE};
constexpr int signalCount = sizeof signals / sizeof signals[0];
constexpr int32_t interrupted = 2;

#if defined(__x86_64__)
constexpr int programCounter = REG_RIP;
#else
constexpr int programCounter = REG_EIP;
#endif

// The kernel's own mask. The C library's functions would leave out two signals that it uses itself.
constexpr uint64_t closedMask = ~uint64_t{0};

constexpr uint64_t openMask()
{
    uint64_t mask = closedMask;
    for (int signal : signals) mask &= ~(uint64_t{1} << (signal - 1));
    return mask;
}

void setSignalMask(const uint64_t* mask, uint64_t* before)
{
    syscall(SYS_rt_sigprocmask, SIG_SETMASK, mask, before, sizeof *mask);
}

bool isBetween(greg_t place, const char* begin, const char* end)
{
    const uintptr_t address = static_cast<uintptr_t>(place);
    return reinterpret_cast<uintptr_t>(begin) <= address && address < reinterpret_cast<uintptr_t>(end);
}

void onSignal(int signal, siginfo_t* info, void* context)
{
    ucontext_t* const interruption = static_cast<ucontext_t*>(context);
    greg_t& place = interruption->uc_mcontext.gregs[programCounter];
    const bool isFault = info->si_code > 0;
    if (isFault) {
        if (isBetween(place, ruxTrialBegin, ruxTrialEnd)) place = reinterpret_cast<greg_t>(ruxTrialFaulted);
        return;
    }
    const int errorNumber = errno;
    syscall(SYS_rt_tgsigqueueinfo, getpid(), syscall(SYS_gettid), signal, info);
    errno = errorNumber;
    if (isBetween(place, ruxWindowBegin, ruxWindowEnd)) {
        place = reinterpret_cast<greg_t>(ruxWindowInterrupted);
        memcpy(&interruption->uc_sigmask, &closedMask, sizeof closedMask);
    }
}

int32_t tryOnce(Trial trial)
{
    struct sigaction guard = {};
    guard.sa_sigaction = onSignal;
    guard.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART;   // on the stack that a thread keeps for its overflow
    sigfillset(&guard.sa_mask);

    uint64_t maskBefore;
    struct sigaction earlier[signalCount];
    setSignalMask(&closedMask, &maskBefore);
    for (int i = 0; i < signalCount; ++i) sigaction(signals[i], &guard, &earlier[i]);
    const uint64_t open = openMask();
    const int32_t outcome = ruxTrialWindow(static_cast<int32_t>(trial), &open, &closedMask);
    for (int i = 0; i < signalCount; ++i) sigaction(signals[i], &earlier[i], nullptr);
    setSignalMask(&maskBefore, nullptr);
    return outcome;
}

}

int32_t runTrial(Trial trial)
{
    for (;;) {
        const int32_t outcome = tryOnce(trial);
        if (outcome != interrupted) return outcome;
    }
}

}
