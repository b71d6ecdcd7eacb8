// Forward DCT in MMX, with the word shuffle of SSE.
#include "lanes/saturating_words4_a6.h"
#include "video/forward_dct_mmx.h"
