// One instruction of a feature, run under a guard that takes back control when it faults.
#pragma once

#include <stdint.h>

namespace rux {

enum class Trial : int32_t { mmx, sse, sse2, extended, cpuid };   // the order of the jumps in trial.S

// 1: the instruction ran; 0: an exception, of whatever kind, stopped it. For one thread at a time.
int32_t runTrial(Trial);

}
