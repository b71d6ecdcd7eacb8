/* The status codes that operations return. Below 0 is an error, above 0 a warning, by the sign alone.
   ruxGetStatusString (frame.h) gives the text of these and of further codes that have no name here. */
#ifndef RUXLIB_STATUS_H
#define RUXLIB_STATUS_H

#include "ruxlib/types.h"

enum {
    ruxStatusModeNotSupported = -9999,    /* the requested mode is not supported */
    ruxStatusStepNotPixelMultiple = -108, /* a stride is no whole number of elements */
    ruxStatusVlcCode = -74,               /* illegal variable-length code in the bit stream */
    ruxStatusChannelOrder = -60,          /* a channel order names a channel that does not exist */
    ruxStatusNoiseAmplitude = -55,        /* noise amplitude for dithering out of range */
    ruxStatusDitherLevels = -54,          /* number of dithering levels out of range */
    ruxStatusDivisorZero = -51,           /* a divisor is zero, the operation was abandoned */
    ruxStatusChannelNumber = -47,         /* illegal channel number */
    ruxStatusStrideError = -37,           /* a stride is less than the row's length */
    ruxStatusAnchor = -34,                /* the anchor lies outside the mask */
    ruxStatusMaskSize = -33,              /* invalid mask size */
    ruxStatusResizeFactor = -23,          /* a resize factor is zero or negative */
    ruxStatusInterpolationMode = -22,     /* invalid interpolation mode */
    ruxStatusFlipMode = -21,              /* the flip axis is none of ruxAxis */
    ruxStatusThresholdBounds = -18,       /* the upper threshold is below the lower */
    ruxStatusContextMismatch = -17,       /* the object is not one of this operation's kind */
    ruxStatusStepError = -14,             /* a stride is below 1 */
    ruxStatusOutOfRange = -11,            /* argument out of range, or point outside the image */
    ruxStatusDivideByZero = -10,          /* division by zero */
    ruxStatusMemoryAllocated = -9,        /* work memory could not be allocated */
    ruxStatusNullPointer = -8,            /* a pointer is null */
    ruxStatusBoundsError = -7,            /* the lower bound is above the upper */
    ruxStatusSizeError = -6,              /* a width, height or length is out of range, as a rule below 1 */
    ruxStatusBadArgument = -5,            /* an argument has no meaning here */
    ruxStatusNoMemory = -4,               /* not enough memory */
    ruxStatusOk = 0,                      /* success */
    ruxStatusNoOperation = 1,             /* nothing was done */
    ruxStatusMisaligned = 2,              /* done in full, but a buffer is not aligned as it should be for speed */
    ruxStatusEvenMedianMask = 5,          /* done with the even median mask lowered to the odd one below it */
    ruxStatusDivByZeroWarning = 6,        /* done, but a divisor was zero somewhere */
    ruxStatusSingularity = 18,            /* done, but the function has a singularity somewhere */
    ruxStatusOutsideDomain = 19           /* done, but an argument was outside the function's domain somewhere */
};

#endif
