// Copy in 16-byte SSE moves.
#include "signal/copy.h"
#include "signal/vector_copy_a6.h"
