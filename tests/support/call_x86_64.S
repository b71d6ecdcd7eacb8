// void ruxTestTrampoline(uintptr_t* record): calls record's function with every register spoiled, and notes what it
// left.
//
// After the return nothing but memory can be trusted, not even the stack pointer: the record is found again through
// a word of the thread's own.
#include "call_record.h"

#define FIELD(name) 8*RECORD_##name

    .section .tbss, "awT", @nobits
    .p2align 3
currentRecord:
    .zero 8

    .text
    .globl ruxTestTrampoline
    .type ruxTestTrampoline, @function
ruxTestTrampoline:
    push %rbx
    push %rbp
    push %r12
    push %r13
    push %r14
    push %r15
    mov %rdi, %rbx
    mov %rdi, %fs:currentRecord@tpoff
    mov %rsp, FIELD(HOST_STACK)(%rbx)
    stmxcsr FIELD(HOST_MXCSR)(%rbx)
    fnstcw FIELD(HOST_X87)(%rbx)

    // The stack words, the first argument on a 16-byte boundary.
    mov FIELD(STACK_WORDS)(%rbx), %rcx
    lea (,%rcx,8), %rax
    sub %rax, %rsp
    and $-16, %rsp
    mov FIELD(STACK)(%rbx), %rsi
    mov %rsp, %rdi
    rep movsq
    mov %rsp, FIELD(STACK_POINTER)(%rbx)

    // Garbage in every register of MMX and the vector unit; the MMX state is then cleared, unless it is to be in use.
    movq FIELD(GARBAGE)(%rbx), %mm0
    .irp i, 1,2,3,4,5,6,7
    movq %mm0, %mm\i
    .endr
    emms
    fninit
    fldcw FIELD(X87_CONTROL)(%rbx)
    fnstcw FIELD(X87_BEFORE)(%rbx)
    cmpq $0, FIELD(MMX_IN_USE)(%rbx)
    je 1f
    movq FIELD(GARBAGE)(%rbx), %mm0
1:
    ldmxcsr FIELD(MXCSR)(%rbx)
    stmxcsr FIELD(MXCSR_BEFORE)(%rbx)
    movq FIELD(GARBAGE)(%rbx), %xmm15
    punpcklqdq %xmm15, %xmm15
    .irp i, 0,1,2,3,4,5,6,7,8,9,10,11,12,13,14
    movdqa %xmm15, %xmm\i
    .endr
    .irp i, 0,1,2,3,4,5,6,7
    movlpd FIELD(VECTOR)+8*\i(%rbx), %xmm\i
    .endr

    mov FIELD(INTEGER)(%rbx), %rdi
    mov FIELD(INTEGER)+8(%rbx), %rsi
    mov FIELD(INTEGER)+16(%rbx), %rdx
    mov FIELD(INTEGER)+24(%rbx), %rcx
    mov FIELD(INTEGER)+32(%rbx), %r8
    mov FIELD(INTEGER)+40(%rbx), %r9
    mov FIELD(FUNCTION)(%rbx), %r11
    mov FIELD(GARBAGE)(%rbx), %rax
    mov %rax, %r10
    mov FIELD(KEPT)+8(%rbx), %rbp
    mov FIELD(KEPT)+16(%rbx), %r12
    mov FIELD(KEPT)+24(%rbx), %r13
    mov FIELD(KEPT)+32(%rbx), %r14
    mov FIELD(KEPT)+40(%rbx), %r15
    pushq FIELD(CALL_FLAGS)(%rbx)
    mov FIELD(KEPT)(%rbx), %rbx
    popfq
    call *%r11

    mov %fs:currentRecord@tpoff, %rcx
    mov %rsp, FIELD(STACK_POINTER_AFTER)(%rcx)
    mov %rax, FIELD(RESULT)(%rcx)
    mov %rbx, FIELD(KEPT)(%rcx)
    mov %rbp, FIELD(KEPT)+8(%rcx)
    mov %r12, FIELD(KEPT)+16(%rcx)
    mov %r13, FIELD(KEPT)+24(%rcx)
    mov %r14, FIELD(KEPT)+32(%rcx)
    mov %r15, FIELD(KEPT)+40(%rcx)
    mov FIELD(STACK_POINTER)(%rcx), %rsp
    pushfq
    popq FIELD(FLAGS)(%rcx)
    pushq $0x202
    popfq
    stmxcsr FIELD(MXCSR_AFTER)(%rcx)
    fnstenv FIELD(X87_ENVIRONMENT)(%rcx)
    fninit
    fldcw FIELD(HOST_X87)(%rcx)
    ldmxcsr FIELD(HOST_MXCSR)(%rcx)

    // The stack words as they are now.
    mov %rcx, %rbx
    mov %rsp, %rsi
    mov FIELD(STACK)(%rbx), %rdi
    mov FIELD(STACK_WORDS)(%rbx), %rcx
    rep movsq
    mov FIELD(HOST_STACK)(%rbx), %rsp
    pop %r15
    pop %r14
    pop %r13
    pop %r12
    pop %rbp
    pop %rbx
    ret
    .size ruxTestTrampoline, . - ruxTestTrampoline

    .section .note.GNU-stack, "", @progbits
