// Residuals in MMX.
#include "lanes/samples_m6.h"

#include "video/half_pel_pairs_words.h"

#include "video/difference_mmx.h"
