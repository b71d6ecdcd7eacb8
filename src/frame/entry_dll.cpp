// The DLL's entry: process attach loads, and is refused when nothing can be bound; nothing else runs anything.
#include <windows.h>

#include "frame/load.h"

extern "C" int32_t ruxAttach()
{
    return ruxSetLibrary();
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    return reason == DLL_PROCESS_ATTACH ? ruxAttach() : 1;
}
