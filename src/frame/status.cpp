// Status texts: each level's entry passes its argument to the one shared table.
#include "frame/level.h"
#include "frame/status_text.h"

namespace rux::RUX_LEVEL {

const char* RUXCALL ruxGetStatusString(ruxStatus status)
{
    return statusText(status);
}

}
