// One string each for all version records.
#pragma once

namespace rux {

extern const char versionText[];
extern const char buildDate[];

}
