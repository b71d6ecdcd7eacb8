// What the trampoline in call_*.S is given and what it finds: an array of machine words, indexed by these names.
// C++ and assembly both include this file.
#define RECORD_FUNCTION 0             // in: the function to call
#define RECORD_STACK 1                // in, out: the words that stand on the stack from the first argument upwards
#define RECORD_STACK_WORDS 2          // in: how many they are
#define RECORD_STACK_SHIFT 3          // in: bytes that the stack pointer stands below a 16-byte boundary
#define RECORD_X87_CONTROL 4          // in: the x87 control word to call under
#define RECORD_MXCSR 5                // in: the vector unit's control register to call under
#define RECORD_HAS_MMX 6              // in: whether MMX registers may be touched
#define RECORD_HAS_SSE 7              // in: whether vector registers and MXCSR may be touched
#define RECORD_GARBAGE 8              // in: what registers without a meaning hold
#define RECORD_KEPT 9                 // in, out: callee-saved registers (4 or 6)
#define RECORD_INTEGER 15             // in: 6 integer argument registers (64 bit)
#define RECORD_VECTOR 21              // in: 8 vector argument registers, low halves (64 bit)
#define RECORD_RESULT 29              // out: eax or rax
#define RECORD_STACK_POINTER 30       // out: the stack pointer at the call
#define RECORD_STACK_POINTER_AFTER 31 // out: the stack pointer after the return
#define RECORD_FLAGS 32               // out: the processor's flags
#define RECORD_MXCSR_BEFORE 33        // out
#define RECORD_MXCSR_AFTER 34         // out
#define RECORD_X87_BEFORE 35          // out: the control word as the unit took it
#define RECORD_X87_ENVIRONMENT 36     // out: 28 bytes of fnstenv (7 words kept)
#define RECORD_HOST_MXCSR 43          // the trampoline's own
#define RECORD_HOST_X87 44            // the trampoline's own
#define RECORD_HOST_STACK 45          // the trampoline's own
#define RECORD_CALL_FLAGS 46          // in: the processor's flags at the call
#define RECORD_MMX_IN_USE 47          // in: whether the MMX state is not cleared before the call
#define RECORD_SIZE 48
