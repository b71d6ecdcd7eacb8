// Functions that break their calling convention or spoil the processor's state, one way each, and some that do not.
// They take the arguments of an exported function, five words in 32-bit builds, and return the sum of the first two.
#pragma once

#include "ruxlib/types.h"

extern "C" {
#define OFFENDER(name) int32_t RUXCALL name(int32_t, int32_t, const void*, ruxiSize)
OFFENDER(innocent);
OFFENDER(clobbersFirstRegister);    // ebx, rbx
OFFENDER(clobbersFramePointer);     // ebp, rbp
OFFENDER(clobbersThirdRegister);    // esi, r12
OFFENDER(clobbersLastRegister);     // edi, r15
OFFENDER(popsTooMuch);
OFFENDER(writesAboveArguments);
OFFENDER(changesX87Precision);
OFFENDER(changesX87Rounding);
OFFENDER(changesVectorRounding);
OFFENDER(setsFlushToZero);
OFFENDER(leavesMmxState);
OFFENDER(leavesValueOnX87Stack);
OFFENDER(leavesDirectionFlag);
OFFENDER(raisesExceptionFlags);     // which a function may
OFFENDER(storesPastTheCaches);      // movntq, movnti, two of 16 bytes, a fence, two more MMX instructions, emms
#undef OFFENDER

// Registers that have no meaning at the call, as they arrive.
int32_t RUXCALL upperHalfOfFirst(int32_t);   // 64 bit: what stands above a 32-bit argument
int32_t RUXCALL stackModulo16(void);         // where the first argument would stand
}
