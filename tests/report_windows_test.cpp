// The report of a failed load as Windows gets it. The three system calls of the report are this program's own, so that
// nothing sounds and nothing waits for a click.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "frame/load.h"
#include "support/processors.h"

namespace {

std::vector<std::string> told;

char* __stdcall copyText(char* to, const char* from)
{
    told.push_back("lstrcpyA");
    strcpy(to, from);
    return to;
}

int __stdcall beep(unsigned kind)
{
    told.push_back("MessageBeep " + std::to_string(kind));
    return 1;
}

int __stdcall box(void* owner, const char* text, const char* title, unsigned kind)
{
    told.push_back(std::string("MessageBoxA ") + (owner ? "owner" : "no owner") + "|" + text + "|" + title + "|" +
                   std::to_string(kind));
    return 1;
}

}

// Where the report's object file looks for the system's functions.
extern "C" {

extern void* const importedCopy __asm__("__imp__lstrcpyA@8");
void* const importedCopy = reinterpret_cast<void*>(copyText);
extern void* const importedBeep __asm__("__imp__MessageBeep@4");
void* const importedBeep = reinterpret_cast<void*>(beep);
extern void* const importedBox __asm__("__imp__MessageBoxA@16");
void* const importedBox = reinterpret_cast<void*>(box);

}

namespace rux::test {
namespace {

TEST(Report, beepsAndThenShowsTheBox)
{
    DispatchTable table = {};
    table.count = 1;
    FakeProcessor processor = processorOfLevel(3);
    EXPECT_EQ(setLibrary(table, processorOf(processor), platformReporter), 0);
    EXPECT_EQ(told, (std::vector<std::string>{
        "lstrcpyA", "MessageBeep 16",
        "MessageBoxA no owner| No rux matching to CPU was found during the Waterfall|Set rux library error|16"}));
}

}
}
