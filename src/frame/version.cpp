// The version records. Each level has its own, so they tell which level the load bound.
#include "frame/level.h"
#include "frame/version_texts.h"

#define TEXT(token) #token
#define LEVEL_TEXT(token) TEXT(token)

namespace rux::RUX_LEVEL {
namespace {

constexpr ruxLibraryVersion imageVersion = {
    3, 0, 18, 54, LEVEL_TEXT(RUX_LEVEL), "ruxi" LEVEL_TEXT(RUX_LEVEL) "l.lib", versionText, buildDate};

constexpr ruxLibraryVersion signalVersion = {
    3, 0, 18, 57, LEVEL_TEXT(RUX_LEVEL), "ruxs" LEVEL_TEXT(RUX_LEVEL) "l.lib", versionText, buildDate};

}

const ruxLibraryVersion* RUXCALL ruxiGetLibVersion(void)
{
    return &imageVersion;
}

const ruxLibraryVersion* RUXCALL ruxsGetLibVersion(void)
{
    return &signalVersion;
}

}
