// A beep, then a box that stays until the user has pressed OK.
#include <windows.h>

#include "frame/load.h"

namespace rux {
namespace {

void copyText(char* to, const char* from)
{
    lstrcpyA(to, from);
}

void beep(uint32_t kind)
{
    MessageBeep(kind);
}

void box(const char* text, const char* title, uint32_t kind)
{
    MessageBoxA(nullptr, text, title, kind);
}

}

const Reporter platformReporter = {copyText, beep, box};

}
