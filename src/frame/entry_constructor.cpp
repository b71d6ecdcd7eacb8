// The load of a shared object and of the static library: a constructor, before any of the host's own.
//
// A constructor cannot refuse a dlopen, and slots that lead nowhere would end the host at its first call, far from the
// cause. So a failed load ends the process here, as the system's loader ends one whose library it cannot load: with
// 127, and at once, since exit handlers of the host may call what was not bound.
#include <unistd.h>

#include "frame/load.h"

extern "C" __attribute__((constructor(101))) void ruxAttach()   // 100 and below belong to the compiler
{
    if (!ruxSetLibrary()) _exit(127);
}
