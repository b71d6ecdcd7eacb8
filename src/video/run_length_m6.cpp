// Run-length encoding, coefficient by coefficient.
#include "video/run_length_scalar.h"
