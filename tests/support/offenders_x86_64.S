// See offenders.h.
    .text

    .macro function name
    .globl \name
    .type \name, @function
\name:
    lea (%rdi,%rsi), %eax
    .endm

    .macro flipControl bit
    fnstcw -8(%rsp)
    xorw $\bit, -8(%rsp)
    fldcw -8(%rsp)
    ret
    .endm

    .macro flipMxcsr bit
    stmxcsr -8(%rsp)
    xorl $\bit, -8(%rsp)
    ldmxcsr -8(%rsp)
    ret
    .endm

function innocent
    ret
function clobbersFirstRegister
    inc %rbx
    ret
function clobbersFramePointer
    inc %rbp
    ret
function clobbersThirdRegister
    inc %r12
    ret
function clobbersLastRegister
    inc %r15
    ret
function popsTooMuch
    ret $8
function writesAboveArguments
    movb $0, 8(%rsp)
    ret
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
    ret
function leavesValueOnX87Stack
    fld1
    ret
function leavesDirectionFlag
    std
    ret
function raisesExceptionFlags
    xorps %xmm0, %xmm0
    divss %xmm0, %xmm0
    fldz
    fdiv %st(0), %st(0)
    fstp %st(0)
    ret
function storesPastTheCaches
    lea -24(%rsp), %rcx
    and $-16, %rcx
    pxor %mm1, %mm1
    paddb %mm1, %mm1
    movntq %mm1, (%rcx)
    pxor %xmm8, %xmm8
    movntdq %xmm8, (%rcx)
    movntps %xmm8, (%rcx)
    movnti %ecx, (%rcx)
    sfence
    emms
    ret

function upperHalfOfFirst
    mov %rdi, %rax
    shr $32, %rax
    ret
function stackModulo16
    lea 8(%rsp), %eax
    and $15, %eax
    ret

    .section .note.GNU-stack, "", @progbits
