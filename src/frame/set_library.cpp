// What a load binds: the built table, on the processor at hand.
#include "frame/load.h"

int32_t ruxSetLibrary()
{
    return rux::setLibrary(rux::dispatchTable, rux::thisProcessor, rux::platformReporter);
}
