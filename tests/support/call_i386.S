// void ruxTestTrampoline(uintptr_t* record): calls record's function with every register spoiled, and notes what it
// left.
//
// After the return nothing but memory can be trusted, not even the stack pointer: the record is found again through
// a word of the thread's own (on Windows, of the program's own).
#include "call_record.h"

#define FIELD(name) 4*RECORD_##name

#ifdef _WIN32
#define SYMBOL(name) _##name
#define CURRENT_RECORD currentRecord
    .lcomm currentRecord, 4
#else
#define SYMBOL(name) name
#define CURRENT_RECORD %gs:currentRecord@ntpoff
    .section .tbss, "awT", @nobits
    .p2align 2
currentRecord:
    .zero 4
#endif

    .text
    .globl SYMBOL(ruxTestTrampoline)
SYMBOL(ruxTestTrampoline):
    push %ebx
    push %ebp
    push %esi
    push %edi
    mov 20(%esp), %ebx
    mov %ebx, CURRENT_RECORD
    mov %esp, FIELD(HOST_STACK)(%ebx)
    fnstcw FIELD(HOST_X87)(%ebx)

    // The stack words, the first argument as far below a 16-byte boundary as was asked.
    mov FIELD(STACK_WORDS)(%ebx), %ecx
    lea (,%ecx,4), %eax
    sub %eax, %esp
    and $-16, %esp
    sub FIELD(STACK_SHIFT)(%ebx), %esp
    mov FIELD(STACK)(%ebx), %esi
    mov %esp, %edi
    rep movsl
    mov %esp, FIELD(STACK_POINTER)(%ebx)

    // Garbage in every register of MMX and the vector unit; the MMX state is then cleared, unless it is to be in use.
    cmpl $0, FIELD(HAS_MMX)(%ebx)
    je 1f
    movq FIELD(GARBAGE)(%ebx), %mm0
    .irp i, 1,2,3,4,5,6,7
    movq %mm0, %mm\i
    .endr
    emms
1:  fninit
    fldcw FIELD(X87_CONTROL)(%ebx)
    fnstcw FIELD(X87_BEFORE)(%ebx)
    cmpl $0, FIELD(MMX_IN_USE)(%ebx)
    je 1f
    movq FIELD(GARBAGE)(%ebx), %mm0
1:
    cmpl $0, FIELD(HAS_SSE)(%ebx)
    je 2f
    stmxcsr FIELD(HOST_MXCSR)(%ebx)
    ldmxcsr FIELD(MXCSR)(%ebx)
    stmxcsr FIELD(MXCSR_BEFORE)(%ebx)
    movss FIELD(GARBAGE)(%ebx), %xmm7
    shufps $0, %xmm7, %xmm7
    .irp i, 0,1,2,3,4,5,6
    movaps %xmm7, %xmm\i
    .endr

2:  mov FIELD(FUNCTION)(%ebx), %eax
    mov FIELD(GARBAGE)(%ebx), %ecx
    mov %ecx, %edx
    mov FIELD(KEPT)+4(%ebx), %ebp
    mov FIELD(KEPT)+8(%ebx), %esi
    mov FIELD(KEPT)+12(%ebx), %edi
    pushl FIELD(CALL_FLAGS)(%ebx)
    mov FIELD(KEPT)(%ebx), %ebx
    popfl
    call *%eax

    mov CURRENT_RECORD, %ecx
    mov %esp, FIELD(STACK_POINTER_AFTER)(%ecx)
    mov %eax, FIELD(RESULT)(%ecx)
    mov %ebx, FIELD(KEPT)(%ecx)
    mov %ebp, FIELD(KEPT)+4(%ecx)
    mov %esi, FIELD(KEPT)+8(%ecx)
    mov %edi, FIELD(KEPT)+12(%ecx)
    mov FIELD(STACK_POINTER)(%ecx), %esp
    pushf
    popl FIELD(FLAGS)(%ecx)
    pushl $0x202
    popfl
    fnstenv FIELD(X87_ENVIRONMENT)(%ecx)
    fninit
    fldcw FIELD(HOST_X87)(%ecx)
    cmpl $0, FIELD(HAS_SSE)(%ecx)
    je 3f
    stmxcsr FIELD(MXCSR_AFTER)(%ecx)
    ldmxcsr FIELD(HOST_MXCSR)(%ecx)

    // The stack words as they are now.
3:  mov %ecx, %ebx
    mov %esp, %esi
    mov FIELD(STACK)(%ebx), %edi
    mov FIELD(STACK_WORDS)(%ebx), %ecx
    rep movsl
    mov FIELD(HOST_STACK)(%ebx), %esp
    pop %edi
    pop %esi
    pop %ebp
    pop %ebx
    ret

#ifndef _WIN32
    .section .note.GNU-stack, "", @progbits
#endif
