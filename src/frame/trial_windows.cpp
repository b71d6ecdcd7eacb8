// The guard is a vectored handler that goes by the place of the exception alone: what is not the trial's, on this
// thread or another, goes on to the handlers that the host has set up.
#include "frame/trial.h"

#include <windows.h>

extern "C" {

extern const char ruxTrialBegin[], ruxTrialEnd[], ruxTrialFaulted[];
int32_t ruxTrial(int32_t trial);

}

namespace rux {
namespace {

LONG CALLBACK onException(EXCEPTION_POINTERS* exception)
{
    DWORD& place = exception->ContextRecord->Eip;
    if (place < reinterpret_cast<uintptr_t>(ruxTrialBegin) || place >= reinterpret_cast<uintptr_t>(ruxTrialEnd))
        return EXCEPTION_CONTINUE_SEARCH;
    place = reinterpret_cast<uintptr_t>(ruxTrialFaulted);
    return EXCEPTION_CONTINUE_EXECUTION;
}

}

int32_t runTrial(Trial trial)
{
    void* const guard = AddVectoredExceptionHandler(1, onException);
    const int32_t outcome = ruxTrial(static_cast<int32_t>(trial));
    RemoveVectoredExceptionHandler(guard);
    return outcome;
}

}
