/* Types that all families share, and the calling convention. */
#ifndef RUXLIB_TYPES_H
#define RUXLIB_TYPES_H

#include <stdint.h>

/* Every exported function is called __stdcall on 32-bit Windows and by the platform's C convention elsewhere. */
#if defined(_WIN32) && !defined(_WIN64)
#define RUXCALL __stdcall
#else
#define RUXCALL
#endif

/* The result of an operation: 0 is success, below 0 an error, above 0 a warning (see status.h). */
typedef int32_t ruxStatus;

/* Width and height of a region, in pixels. */
typedef struct {
    int32_t width;
    int32_t height;
} ruxiSize;

/* A place in an image, in pixels. */
typedef struct {
    int32_t x;
    int32_t y;
} ruxiPoint;

/* A rectangle in an image, in pixels. */
typedef struct {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} ruxiRect;

#endif
