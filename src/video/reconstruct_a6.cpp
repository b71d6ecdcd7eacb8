// Decoding of blocks, code by code.
#include "video/reconstruct_scalar.h"
