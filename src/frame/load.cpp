#include "frame/load.h"

#include <string.h>

namespace rux {
namespace {

constexpr int32_t levelCount = 4;   // and the sentinel that ends a row of the waterfall

// The levels to try on a processor of each level, best first.
constexpr int32_t waterfall[levelCount][levelCount + 1] = {
    {0, levelCount},
    {1, 0, levelCount},
    {2, 1, 0, levelCount},
    {3, 2, 1, 0, levelCount},
};

constexpr uint32_t stopIcon = 16;
constexpr char title[] = "Set rux library error";
constexpr char text[] = " No rux matching to CPU was found during the Waterfall";   // the blank belongs to it

// A level that stops at a gap leaves rows of its own behind; the next one writes every row again.
int32_t bindBestLevel(const DispatchTable& table, int32_t processorLevel)
{
    if (table.count < 1 || processorLevel >= levelCount) return 0;
    for (const int32_t* level = waterfall[processorLevel]; *level < levelCount; ++level) {
        if (fillSlots(table, *level)) return 1;
    }
    return 0;
}

}

int32_t setLibrary(const DispatchTable& table, const Processor& processor, const Reporter& reporter)
{
    char message[256];
    memset(message, 0, sizeof message);
    ProcessorInfo info = {};   // stays so on a processor without CPUID, which gives level 0
    getProcessorInfo(processor, &info);
    if (bindBestLevel(table, levelOf(info.featureMask))) return 1;

    reporter.copyText(message, text);
    reporter.beep(stopIcon);
    reporter.box(message, title, stopIcon);
    return 0;
}

}
