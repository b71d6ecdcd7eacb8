// Replicated border in MMX moves.
#include "movement/replicate_border_mmx.h"
