// Median in MMX vectors of four samples.
#include "lanes/saturating_words4_m6.h"
#include "signal/vector_copy_m6.h"

#include "signal/median_mmx.h"
