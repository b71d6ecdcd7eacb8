#include "support/note.h"

#include <csignal>
#include <cstdio>

#include "support/per_thread.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace rux::test {
namespace {

RUX_PER_THREAD Note* innermost = nullptr;

// A test that faults ends here: its notes are all that tells which of many calls it was.
void tellLastWords()
{
    std::fprintf(stderr, "fault in\n%s", Note::all().c_str());
    std::fflush(stderr);
}

#ifdef _WIN32
LONG WINAPI onFault(EXCEPTION_POINTERS* fault)
{
    const DWORD code = fault->ExceptionRecord->ExceptionCode;
    if (code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_ILLEGAL_INSTRUCTION) tellLastWords();
    return EXCEPTION_CONTINUE_SEARCH;
}

const bool handlerStands = AddVectoredExceptionHandler(1, onFault) != nullptr;
#else
constexpr int faults[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE};
struct sigaction before[sizeof faults / sizeof *faults];

// Puts back what handled the fault before and returns: the instruction faults again, into that handler.
void onFault(int)
{
    for (size_t i = 0; i < sizeof faults / sizeof *faults; i++) sigaction(faults[i], &before[i], nullptr);
    tellLastWords();
}

const bool handlerStands = [] {
    struct sigaction action = {};
    action.sa_handler = onFault;
    for (size_t i = 0; i < sizeof faults / sizeof *faults; i++) sigaction(faults[i], &action, &before[i]);
    return true;
}();
#endif

}

Note::Note(std::function<std::string()> text) : text(std::move(text)), outer(innermost)
{
    static_cast<void>(handlerStands);
    innermost = this;
}

Note::~Note()
{
    innermost = outer;
}

std::string Note::all()
{
    std::string lines;
    for (const Note* note = innermost; note; note = note->outer) lines = "  " + note->text() + "\n" + lines;
    return lines;
}

}
