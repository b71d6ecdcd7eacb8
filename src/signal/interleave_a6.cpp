// Interleaving in MMX tiles of four frames.
#include "signal/vector_copy_a6.h"

#include "signal/interleave_mmx.h"
