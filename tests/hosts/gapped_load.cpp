// A load sequence that no level passes: the built table with a gap in its last row. In a library made with it the
// load fails as it would fail for a user; on Windows the report goes to the file named by RUX_TEST_REPORT instead of
// a box that waits for a click.
#if defined(_WIN32)
#include <windows.h>
#endif

#include "frame/load.h"

namespace {

rux::DispatchTable gapped;

#if defined(_WIN32)
void append(const char* text)
{
    char path[MAX_PATH];
    if (!GetEnvironmentVariableA("RUX_TEST_REPORT", path, sizeof path)) return;
    const HANDLE file = CreateFileA(path, FILE_APPEND_DATA, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written;
    WriteFile(file, text, static_cast<DWORD>(lstrlenA(text)), &written, nullptr);
    CloseHandle(file);
}

char line[512];

void copyText(char* to, const char* from)
{
    lstrcpyA(to, from);
}

void beep(uint32_t kind)
{
    wsprintfA(line, "beep %u\n", kind);
    append(line);
}

void box(const char* text, const char* title, uint32_t kind)
{
    wsprintfA(line, "box %u|%s|%s\n", kind, title, text);
    append(line);
}

const rux::Reporter reporter = {copyText, beep, box};
#else
const rux::Reporter& reporter = rux::platformReporter;
#endif

}

int32_t ruxSetLibrary()
{
    gapped = rux::dispatchTable;
    for (rux::Entry& entry : gapped.rows[gapped.count - 1].entry) entry = nullptr;
    return rux::setLibrary(gapped, rux::thisProcessor, reporter);
}
