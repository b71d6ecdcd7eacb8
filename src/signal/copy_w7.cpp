// Copy in 16-byte moves.
#include "signal/copy.h"
#include "signal/vector_copy_w7.h"
