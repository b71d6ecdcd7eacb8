// The guard of the trials on Linux: it takes every kind of exception, and a host that loads the library late, with
// threads and handlers of its own, notices nothing.
#include <gtest/gtest.h>

#include <asm/prctl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

#include "frame/processor.h"

namespace rux::test {
namespace {

constexpr int guarded[] = {SIGILL, SIGSEGV, SIGBUS, SIGFPE};

#if defined(__x86_64__)
constexpr int programCounter = REG_RIP;
#else
constexpr int programCounter = REG_EIP;
#endif

// A handler of the host for one signal, put back at the end.
class HostHandler {
public:
    HostHandler(int signal, void (*handler)(int, siginfo_t*, void*), int flags = 0) : signal(signal)
    {
        struct sigaction action = {};
        action.sa_sigaction = handler;
        action.sa_flags = SA_SIGINFO | flags;
        sigaddset(&action.sa_mask, SIGUSR1);
        sigaction(signal, &action, &earlier);
    }
    ~HostHandler() { sigaction(signal, &earlier, nullptr); }
    HostHandler(const HostHandler&) = delete;

private:
    int signal;
    struct sigaction earlier;
};

constexpr uint32_t allFeatures = 15;

void probe(uint32_t features)
{
    for (const uint32_t feature : {1u, 2u, 4u, 8u}) {
        if (features & feature) ruxProbeFeature(feature);
    }
    ASSERT_EQ(ruxHasCpuid(), 1);
}

// Runs the trials, over and over, for as long as a thread of the host does its work.
template <typename Work>
void probeWhile(Work work, uint32_t features = allFeatures)
{
    std::atomic<bool> done{false};
    std::thread host([&] {
        work();
        done = true;
    });
    while (!done) probe(features);
    host.join();
}

uint64_t signalMask()
{
    uint64_t mask;
    syscall(SYS_rt_sigprocmask, SIG_SETMASK, nullptr, &mask, sizeof mask);
    return mask;
}

TEST(Guard, putsHandlersAndMaskBack)
{
    const HostHandler handler(SIGSEGV, [](int, siginfo_t*, void*) {}, SA_NODEFER);
    struct sigaction before[std::size(guarded)], after;
    for (size_t index = 0; index < std::size(guarded); ++index) sigaction(guarded[index], nullptr, &before[index]);
    const uint64_t mask = signalMask();
    errno = 1234;
    probe(allFeatures);
    EXPECT_EQ(errno, 1234);
    EXPECT_EQ(signalMask(), mask);
    for (size_t index = 0; index < std::size(guarded); ++index) {
        sigaction(guarded[index], nullptr, &after);
        EXPECT_EQ(after.sa_sigaction, before[index].sa_sigaction);
        EXPECT_EQ(after.sa_flags, before[index].sa_flags);
        EXPECT_EQ(std::memcmp(&after.sa_mask, &before[index].sa_mask, sizeof(uint64_t)), 0);
    }
}

TEST(Guard, takesAPendingFloatingPointException)
{
    const uint16_t divisionByZeroRaises = 0x037B;
    uint16_t before;
    asm volatile("fnstcw %0\n\tfldcw %1\n\tfld1\n\tfldz\n\tfdivrp" : "=m"(before) : "m"(divisionByZeroRaises));
    const int32_t ran = ruxProbeFeature(featureMmx);
    asm volatile("fninit\n\tfldcw %0" : : "m"(before));
    EXPECT_EQ(ran, 0);
    EXPECT_EQ(ruxProbeFeature(featureMmx), 1);
}

TEST(Guard, takesAnIdentificationThatTheSystemForbids)
{
    if (syscall(SYS_arch_prctl, ARCH_SET_CPUID, 0) != 0) GTEST_SKIP() << "this system cannot forbid it";
    const int32_t ran = ruxHasCpuid();
    const uint32_t features = ruxGetProcessorInfo(nullptr);
    syscall(SYS_arch_prctl, ARCH_SET_CPUID, 1);
    EXPECT_EQ(ran, 0);
    EXPECT_EQ(features, 0u);
    EXPECT_EQ(ruxHasCpuid(), 1);
}

// Faults of a host's thread: its handler sees each of them, once.

std::atomic<int> faultsServed;

void skipTwoByteInstruction(int, siginfo_t* info, void* context)
{
    EXPECT_GT(info->si_code, 0);
    static_cast<ucontext_t*>(context)->uc_mcontext.gregs[programCounter] += 2;
    ++faultsServed;
}

template <typename Fault>
void faultWhileProbing(int signal, Fault fault)
{
    constexpr int faults = 5000;
    const HostHandler handler(signal, skipTwoByteInstruction, SA_ONSTACK);
    faultsServed = 0;
    probeWhile([&] {
        for (int turn = 1; turn <= faults; ++turn) {
            fault();
            if (faultsServed != turn) break;
        }
    });
    EXPECT_EQ(faultsServed, faults);
}

TEST(HostsFaults, unknownInstruction)
{
    faultWhileProbing(SIGILL, [] { asm volatile("ud2" : : : "memory"); });
}

TEST(HostsFaults, forbiddenAddress)
{
    faultWhileProbing(SIGSEGV, [] {
        uintptr_t address = 16;
        asm volatile("movl (%0), %%eax" : "+a"(address) : : "memory");
    });
}

TEST(HostsFaults, divisionByZero)
{
    faultWhileProbing(SIGFPE, [] {
        uint32_t low = 1, high = 0;
        asm volatile("divl %2" : "+a"(low), "+d"(high) : "c"(0) : "memory", "cc");
    });
}

TEST(HostsFaults, fullStack)
{
    const long page = sysconf(_SC_PAGESIZE);
    char* const wall = static_cast<char*>(mmap(nullptr, page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(wall, MAP_FAILED);
    static char spare[1 << 16];
    faultWhileProbing(SIGSEGV, [&] {
        const stack_t spareStack = {spare, 0, sizeof spare};
        stack_t earlier;
        ASSERT_EQ(sigaltstack(&spareStack, &earlier), 0);
        const uintptr_t word = 0;
        void* stack = wall + page;
#if defined(__x86_64__)
        asm volatile("xchgq %0, %%rsp\n\tpushq (%%rax)\n\txchgq %0, %%rsp" : "+b"(stack) : "a"(&word) : "memory");
#else
        asm volatile("xchgl %0, %%esp\n\tpushl (%%eax)\n\txchgl %0, %%esp" : "+S"(stack) : "a"(&word) : "memory");
#endif
        sigaltstack(&earlier, nullptr);
    });
    munmap(wall, page);
}

// Signals that somebody sends: the host's handler gets each with its particulars, once, on the thread it was sent to.

struct Delivery {
    int code, value;
    pid_t process, thread;
};

std::atomic<int> delivered;
std::atomic<Delivery*> lastDelivery;

void receive(int, siginfo_t* info, void*)
{
    *lastDelivery = {info->si_code, info->si_value.sival_int, info->si_pid,
                     static_cast<pid_t>(syscall(SYS_gettid))};
    ++delivered;
}

// Sends signals one by one, each when the last has been served. send(signal, number) sends one.
template <typename Send, typename Check>
void sendWhileProbing(Send send, Check check, uint32_t features = allFeatures)
{
    constexpr int turns = 200;
    Delivery delivery = {};
    lastDelivery = &delivery;
    for (const int signal : guarded) {
        const HostHandler handler(signal, receive);
        delivered = 0;
        const uint64_t mask = signalMask();
        probeWhile([&] {
            for (int turn = 1; turn <= turns; ++turn) {
                send(signal, turn);
                const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(10);
                while (delivered < turn && std::chrono::steady_clock::now() < patience) std::this_thread::yield();
                ASSERT_EQ(delivered, turn) << "signal " << signal;
                ASSERT_EQ(delivery.process, getpid());
                check(delivery, turn);
            }
        }, features);
        EXPECT_EQ(delivered, turns) << "signal " << signal;
        EXPECT_EQ(signalMask(), mask);
    }
}

// The kernel drops a signal for a thread that has one of its kind pending: of a sent SIGILL and a trial's own, at the
// same moment, one is lost. So only trials that run are tried here.
TEST(SentSignals, toTheTrialsThread)
{
    const uint32_t features = ruxGetProcessorInfo(nullptr);
    const pthread_t prober = pthread_self();
    const pid_t proberId = static_cast<pid_t>(syscall(SYS_gettid));
    sendWhileProbing([&](int signal, int turn) { pthread_sigqueue(prober, signal, sigval{turn}); },
                     [&](const Delivery& delivery, int turn) {
                         ASSERT_EQ(delivery.code, SI_QUEUE);
                         ASSERT_EQ(delivery.value, turn);
                         ASSERT_EQ(delivery.thread, proberId);
                     }, features);
    sendWhileProbing([&](int signal, int) { pthread_kill(prober, signal); },
                     [&](const Delivery& delivery, int) {
                         ASSERT_EQ(delivery.code, SI_TKILL);
                         ASSERT_EQ(delivery.thread, proberId);
                     }, features);
}

TEST(SentSignals, toAThreadOfTheHost)
{
    sendWhileProbing([](int signal, int turn) { pthread_sigqueue(pthread_self(), signal, sigval{turn}); },
                     [](const Delivery& delivery, int turn) {
                         ASSERT_EQ(delivery.code, SI_QUEUE);
                         ASSERT_EQ(delivery.value, turn);
                         ASSERT_EQ(delivery.thread, static_cast<pid_t>(syscall(SYS_gettid)));
                     });
}

TEST(SentSignals, toTheProcess)
{
    sendWhileProbing([](int signal, int) { kill(getpid(), signal); },
                     [](const Delivery& delivery, int) { ASSERT_EQ(delivery.code, SI_USER); });
}

// As many as the system carries, so that many arrive while a trial is under way.
TEST(SentSignals, inAStorm)
{
    const uint64_t mask = signalMask();
    for (const int signal : guarded) {
        const HostHandler handler(signal, [](int, siginfo_t*, void*) { ++delivered; });
        delivered = 0;
        probeWhile([&] {
            for (int turn = 0; turn < 20000; ++turn) kill(getpid(), signal);
        });
        EXPECT_GT(delivered, 0);
        EXPECT_EQ(signalMask(), mask);
    }
}

}
}
