// Forward DCT in MMX alone.
#include "lanes/saturating_words4_m6.h"
#include "video/forward_dct_mmx.h"
