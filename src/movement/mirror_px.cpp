// Mirroring, pixel by pixel.
#include "movement/mirror_scalar.h"
