// Residuals in MMX with the byte average of SSE.
#include "lanes/samples_a6.h"

#include "video/half_pel_pairs_bytes.h"

#include "video/difference_mmx.h"
