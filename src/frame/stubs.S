// For each exported name a slot and a stub. A stub is one jump through its slot: it touches no argument, makes no
// frame and tests nothing, so the body sees the caller's own argument list and returns straight to the caller.

#if defined(__x86_64__)

        .macro  operation name, bytes
        .bss
        .balign 8
        .globl  ruxSlot_\name
        .hidden ruxSlot_\name
        .type   ruxSlot_\name, @object
        .size   ruxSlot_\name, 8
ruxSlot_\name:
        .zero   8
        .text
        .balign 16
        .globl  \name
        .type   \name, @function
\name:
        jmp     *ruxSlot_\name(%rip)
        .size   \name, . - \name
        .endm

#elif defined(__ELF__)

        // Position-independent: eax is free at a call, and takes the address that the slot lies relative to.
        .text
        .type   here, @function
here:
        movl    (%esp), %eax
        ret
        .size   here, . - here

        .macro  operation name, bytes
        .bss
        .balign 4
        .globl  ruxSlot_\name
        .hidden ruxSlot_\name
        .type   ruxSlot_\name, @object
        .size   ruxSlot_\name, 4
ruxSlot_\name:
        .zero   4
        .text
        .balign 16
        .globl  \name
        .type   \name, @function
\name:
        call    here
.Lfrom_\name:
        jmp     *(ruxSlot_\name - .Lfrom_\name)(%eax)
        .size   \name, . - \name
        .endm

#else

        .macro  operation name, bytes
        .bss
        .balign 4
        .globl  _ruxSlot_\name
_ruxSlot_\name:
        .space  4
        .text
        .balign 16
        .globl  _\name\()@\bytes
        .def    _\name\()@\bytes; .scl 2; .type 32; .endef
_\name\()@\bytes:
        jmp     *_ruxSlot_\name
        .endm

#endif

#define OPERATION(name, bytes, form) operation name, bytes
#include "frame/operations.def"

        // A host that links the static library gets the load along with its first stub.
#if defined(__x86_64__)
        .globl  ruxAttach
        .reloc  ., R_X86_64_NONE, ruxAttach
#elif defined(__ELF__)
        .globl  ruxAttach
        .reloc  ., R_386_NONE, ruxAttach
#else
        .section .rdata, "dr"
        .long   _ruxAttach
#endif

#if defined(__ELF__)
        .section .note.GNU-stack, "", @progbits
#endif
