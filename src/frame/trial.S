// The trial instructions. All of them stand between ruxTrialBegin and ruxTrialEnd, at one depth of the stack, so that
// a guard knows a trial's exception by its place alone and sends it on to ruxTrialFaulted, which ends with 0.

#if defined(__ELF__)
#define PLACE(name) .globl name; .hidden name; name
#else
#define PLACE(name) .globl _##name; _##name
#endif

        // Runs the trial whose number is in eax and leaves its result there; writes ebx, ecx and edx.
        .macro  trials
        cmpl    $1, %eax
        jb      .Lmmx
        je      .Lsse
        cmpl    $3, %eax
        jb      .Lsse2
        je      .Lextended
PLACE(ruxTrialBegin):
        xorl    %eax, %eax
        cpuid
        jmp     .Lran
.Lmmx:
        pxor    %mm0, %mm0
        emms
        jmp     .Lran
.Lsse:
        xorps   %xmm0, %xmm0
        jmp     .Lran
.Lsse2:
        xorpd   %xmm0, %xmm0
        jmp     .Lran
.Lextended:
        pfrcp   %mm0, %mm0
        emms
        jmp     .Lran
PLACE(ruxTrialEnd):
.Lran:
        movl    $1, %eax
        jmp     .Ldone
PLACE(ruxTrialFaulted):
        xorl    %eax, %eax
.Ldone:
        .endm

        .text

#if defined(__x86_64__)

        .macro  set_signal_mask mask
        movl    $14, %eax            // rt_sigprocmask
        movl    $2, %edi             // SIG_SETMASK
        movq    \mask, %rsi
        xorl    %edx, %edx
        movl    $8, %r10d
        syscall
        .endm

// int32_t ruxTrialWindow(int32_t trial, const uint64_t* openMask, const uint64_t* closedMask): see trial_linux.cpp.
        .type   ruxTrialWindow, @function
PLACE(ruxTrialWindow):
        pushq   %rbx
        pushq   %r12
        movl    %edi, %ebx
        movq    %rdx, %r12
        set_signal_mask %rsi
PLACE(ruxWindowBegin):
        movl    %ebx, %eax
        trials
        movl    %eax, %ebx
        set_signal_mask %r12
PLACE(ruxWindowEnd):
        movl    %ebx, %eax
.Lleave:
        popq    %r12
        popq    %rbx
        ret
PLACE(ruxWindowInterrupted):
        movl    $2, %eax
        jmp     .Lleave
        .size   ruxTrialWindow, . - ruxTrialWindow

#elif defined(__ELF__)

        .macro  set_signal_mask mask
        movl    $175, %eax           // rt_sigprocmask
        movl    $2, %ebx             // SIG_SETMASK
        movl    \mask, %ecx
        xorl    %edx, %edx
        movl    $8, %esi
        int     $0x80
        .endm

        .type   ruxTrialWindow, @function
PLACE(ruxTrialWindow):
        pushl   %ebx
        pushl   %esi
        pushl   %edi
        set_signal_mask 20(%esp)
PLACE(ruxWindowBegin):
        movl    16(%esp), %eax
        trials
        movl    %eax, %edi
        set_signal_mask 24(%esp)
PLACE(ruxWindowEnd):
        movl    %edi, %eax
.Lleave:
        popl    %edi
        popl    %esi
        popl    %ebx
        ret
PLACE(ruxWindowInterrupted):
        movl    $2, %eax
        jmp     .Lleave
        .size   ruxTrialWindow, . - ruxTrialWindow

#else

// int32_t ruxTrial(int32_t trial)
PLACE(ruxTrial):
        pushl   %ebx
        movl    8(%esp), %eax
        trials
        popl    %ebx
        ret

#endif

#if defined(__ELF__)
        .section .note.GNU-stack, "", @progbits
#endif
