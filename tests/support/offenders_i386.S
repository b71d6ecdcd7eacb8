// See offenders.h.
#ifdef _WIN32
#define SYMBOL(name, bytes) _##name##@##bytes
#define POP(bytes) ret $bytes
#else
#define SYMBOL(name, bytes) name
#define POP(bytes) ret
#endif
#define FUNCTION(name)                  \
    .globl SYMBOL(name, 20);            \
    SYMBOL(name, 20):                   \
    mov 4(%esp), %eax;                  \
    add 8(%esp), %eax
#define RETURN POP(20)

    .text

    .macro flipControl bit
    sub $4, %esp
    fnstcw (%esp)
    xorw $\bit, (%esp)
    fldcw (%esp)
    add $4, %esp
    RETURN
    .endm

    .macro flipMxcsr bit
    sub $4, %esp
    stmxcsr (%esp)
    xorl $\bit, (%esp)
    ldmxcsr (%esp)
    add $4, %esp
    RETURN
    .endm

FUNCTION(innocent)
    RETURN
FUNCTION(clobbersFirstRegister)
    inc %ebx
    RETURN
FUNCTION(clobbersFramePointer)
    inc %ebp
    RETURN
FUNCTION(clobbersThirdRegister)
    inc %esi
    RETURN
FUNCTION(clobbersLastRegister)
    inc %edi
    RETURN
FUNCTION(popsTooMuch)
    ret $24
FUNCTION(writesAboveArguments)
    movb $0, 24(%esp)
    RETURN
FUNCTION(changesX87Precision)
    flipControl 0x100
FUNCTION(changesX87Rounding)
    flipControl 0x400
FUNCTION(changesVectorRounding)
    flipMxcsr 0x2000
FUNCTION(setsFlushToZero)
    flipMxcsr 0x8000
FUNCTION(leavesMmxState)
    movd %eax, %mm3
    RETURN
FUNCTION(leavesValueOnX87Stack)
    fld1
    RETURN
FUNCTION(leavesDirectionFlag)
    std
    RETURN
FUNCTION(raisesExceptionFlags)
    xorps %xmm0, %xmm0
    divss %xmm0, %xmm0
    fldz
    fdiv %st(0), %st(0)
    fstp %st(0)
    RETURN

    .globl SYMBOL(upperHalfOfFirst, 4)
SYMBOL(upperHalfOfFirst, 4):
    xor %eax, %eax
    POP(4)
    .globl SYMBOL(stackModulo16, 0)
SYMBOL(stackModulo16, 0):
    lea 4(%esp), %eax
    and $15, %eax
    ret

#ifndef _WIN32
    .section .note.GNU-stack, "", @progbits
#endif
