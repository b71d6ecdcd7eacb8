#include "frame/version_texts.h"

namespace rux {

const char versionText[] = "v3.0 gold";
const char buildDate[] = "Nov 26 2002";

}
