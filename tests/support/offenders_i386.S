// See offenders.h.
    // Windows: the callee pops its arguments, and their bytes stand in its name.
    .macro label name bytes
#ifdef _WIN32
    .globl _\name\()@\bytes
_\name\()@\bytes:
#else
    .globl \name
\name:
#endif
    .endm

    .macro return bytes=20
#ifdef _WIN32
    ret $\bytes
#else
    ret
#endif
    .endm

    .macro function name
    label \name, 20
    mov 4(%esp), %eax
    add 8(%esp), %eax
    .endm

    .text

    .macro flipControl bit
    sub $4, %esp
    fnstcw (%esp)
    xorw $\bit, (%esp)
    fldcw (%esp)
    add $4, %esp
    return
    .endm

    .macro flipMxcsr bit
    sub $4, %esp
    stmxcsr (%esp)
    xorl $\bit, (%esp)
    ldmxcsr (%esp)
    add $4, %esp
    return
    .endm

function innocent
    return
function clobbersFirstRegister
    inc %ebx
    return
function clobbersFramePointer
    inc %ebp
    return
function clobbersThirdRegister
    inc %esi
    return
function clobbersLastRegister
    inc %edi
    return
function popsTooMuch
    ret $24
function writesAboveArguments
    movb $0, 24(%esp)
    return
function changesX87Precision
    flipControl 0x100
function changesX87Rounding
    flipControl 0x400
function changesVectorRounding
    flipMxcsr 0x2000
function setsFlushToZero
    flipMxcsr 0x8000
function leavesMmxState
    movd %eax, %mm3
    return
function leavesValueOnX87Stack
    fld1
    return
function leavesDirectionFlag
    std
    return
function raisesExceptionFlags
    xorps %xmm0, %xmm0
    divss %xmm0, %xmm0
    fldz
    fdiv %st(0), %st(0)
    fstp %st(0)
    return
function storesPastTheCaches
    sub $32, %esp
    lea 16(%esp), %ecx
    and $-16, %ecx
    pxor %mm1, %mm1
    paddb %mm1, %mm1
    movntq %mm1, (%ecx)
    pxor %xmm0, %xmm0
    movntdq %xmm0, (%ecx)
    movntps %xmm0, (%ecx)
    movnti %ecx, (%ecx)
    sfence
    emms
    add $32, %esp
    return

    label upperHalfOfFirst, 4
    xor %eax, %eax
    return 4
    label stackModulo16, 0
    lea 4(%esp), %eax
    and $15, %eax
    ret

#ifndef _WIN32
    .section .note.GNU-stack, "", @progbits
#endif
