// The load: the processor's level, the walk that binds all names to one level, and the report when none can be bound.
#pragma once

#include <stdint.h>

#include "frame/dispatch.h"
#include "frame/processor.h"

namespace rux {

// How a failed load reaches the user.
struct Reporter {
    void (*copyText)(char* to, const char* from);
    void (*beep)(uint32_t kind);
    void (*box)(const char* text, const char* title, uint32_t kind);
};

extern const Reporter platformReporter;

// 1: one level was bound to all slots; 0: none could be, and the reporter has told.
int32_t setLibrary(const DispatchTable&, const Processor&, const Reporter&);

}

extern "C" int32_t ruxSetLibrary();
