/* The library itself: status texts, version records, aligned memory. All levels do the same here. */
#ifndef RUXLIB_FRAME_H
#define RUXLIB_FRAME_H

#include "ruxlib/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The text of a status code: a constant zero-terminated string that lives as long as the library, never null.
   The code is matched exactly; one that is not known gives "Unknown Status Code". Equal codes give equal pointers.
   Do not write to it, do not free it. */
const char* RUXCALL ruxGetStatusString(ruxStatus status);

/* Version and level of one family; constant, owned by the library. */
typedef struct {
    int32_t majorVersion;
    int32_t minorVersion;
    int32_t majorBuild;
    int32_t build;           /* 54 for images, 57 for signals */
    char targetName[4];      /* the bound level: "px", "m6", "a6" or "w7", and two zero bytes */
    const char* libraryName; /* the static library of the family and level, such as "ruxiw7l.lib" */
    const char* versionText; /* printable version */
    const char* buildDate;   /* printable build date */
} ruxLibraryVersion;

/* The version record of the image family (ruxi) and of the signal family (ruxs) at the level that the load bound:
   the place to read that level from. They cannot fail, they agree on the level, and every call gives the same
   pointer. */
const ruxLibraryVersion* RUXCALL ruxiGetLibVersion(void);
const ruxLibraryVersion* RUXCALL ruxsGetLibVersion(void);

/* Vectors of len elements, beginning on a 32-byte boundary, not cleared. Null when len is below 1 or memory is short.
   The size in bytes is computed in 32 bits and an overflow is NOT noticed: ruxsMalloc_32f with len 0x40000000 or more
   gives a block far smaller than asked. Thread safe as malloc is. */
uint8_t* RUXCALL ruxsMalloc_8u(int32_t len);
float* RUXCALL ruxsMalloc_32f(int32_t len);

/* Images of width elements by height rows in which every row begins on a 32-byte boundary, not cleared. *stepBytes
   receives the stride: the row's bytes rounded up to a multiple of 32.
   Null, in this order: stepBytes null; width or height below 1 (*stepBytes is then 0); memory short (*stepBytes then
   holds the stride all the same). height x stride is a 32-bit product and an overflow is NOT noticed: one that wraps
   to 0 or below gives null, one that wraps to a positive number a block too small for the image.
   Thread safe as malloc is. */
uint8_t* RUXCALL ruxiMalloc_8u_C1(int32_t width, int32_t height, int32_t* stepBytes);
int16_t* RUXCALL ruxiMalloc_16s_C1(int32_t width, int32_t height, int32_t* stepBytes);
float* RUXCALL ruxiMalloc_32f_C1(int32_t width, int32_t height, int32_t* stepBytes);

/* Give back memory that any allocator above handed out; either one serves both families. Null does nothing; a pointer
   from elsewhere is not detected. Thread safe as free is. */
void RUXCALL ruxsFree(void* block);
void RUXCALL ruxiFree(void* block);

#ifdef __cplusplus
}
#endif

#endif
