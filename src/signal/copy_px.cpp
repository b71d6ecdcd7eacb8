// Copy in plain moves.
#include "signal/copy.h"
#include "signal/vector_copy_px.h"
