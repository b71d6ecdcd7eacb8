/* ruxlib: image, video-coding and signal primitives for x86, on raw buffers of the host.

   Levels. Every operation exists in four bodies: px (plain), m6 (MMX), a6 (SSE), w7 (SSE2). The load binds all names
   to the highest level that the processor allows; ruxiGetLibVersion tells which. Levels agree in arguments, statuses
   and every bit of the result unless an operation's comment says otherwise; what it says is part of the contract.

   Names. Family (ruxi for images, ruxs for sample vectors), operation, element type (8u, 16s, 16u, 32s, 32f, 64f; two
   joined are source and destination), layout (C1 to C4: interleaved channels; AC4: four of which the last, alpha, is
   not processed; P3: three planes; two joined are source and destination), then I: in place, M: with a mask, R: a
   region of interest with strides.

   Arguments. An image is a pointer to the region's first pixel and, next to it, the stride from row to row in bytes,
   also for 16- and 32-bit elements. Sizes are in pixels. Sources stand before destinations.

   Statuses. Checks are made in the order in which each comment lists them, and the first failure ends the call before
   anything is written, unless told otherwise. The codes are in status.h.

   State. The library keeps none, starts no thread, takes no lock: operations are re-entrant and may run at once on
   different buffers. Control registers (x87 and vector) come back as they were found, and no MMX state is left
   behind. The x87 precision that a host has set changes no result; the rounding modes are the host's unless an
   operation sets one. */
#ifndef RUXLIB_RUXLIB_H
#define RUXLIB_RUXLIB_H

#include "ruxlib/types.h"
#include "ruxlib/status.h"
#include "ruxlib/frame.h"
#include "ruxlib/movement.h"
#include "ruxlib/arith.h"
#include "ruxlib/filter.h"
#include "ruxlib/colour.h"
#include "ruxlib/geometry.h"
#include "ruxlib/video.h"
#include "ruxlib/signal.h"

#endif
