// Copy in 8-byte MMX moves.
#include "signal/copy.h"
#include "signal/vector_copy_m6.h"
