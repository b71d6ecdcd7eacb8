// Printable names of processors. They are for a reader of the record; nothing depends on them.
#include <string.h>

#include "frame/processor.h"

namespace {

struct NameRow {
    char vendor[13];
    int32_t family, firstModel, lastModel;
    char name[31];
};

constexpr NameRow rows[] = {
    {"AuthenticAMD", 5, 0, 3, "AMD K5"},
    {"AuthenticAMD", 5, 6, 13, "AMD K6"},
    {"AuthenticAMD", 6, 0, 15, "AMD K7"},
    {"AuthenticAMD", 0x00F, 0, 15, "AMD K8"},
    {"AuthenticAMD", 0x01F, 0, 15, "AMD K10"},
    {"AuthenticAMD", 0x06F, 0, 15, "AMD family 15h"},
    {"AuthenticAMD", 0x08F, 0, 15, "AMD family 17h"},
    {"AuthenticAMD", 0x0AF, 0, 15, "AMD family 19h"},
    {"CentaurHauls", 5, 0, 15, "Centaur WinChip"},
    {"CentaurHauls", 6, 0, 9, "VIA C3"},
    {"CentaurHauls", 6, 10, 14, "VIA C7"},
    {"CentaurHauls", 6, 15, 15, "VIA Nano"},
    {"CyrixInstead", 5, 0, 15, "Cyrix 6x86"},
    {"CyrixInstead", 6, 0, 15, "Cyrix 6x86MX"},
    {"GenuineTMx86", 5, 0, 15, "Transmeta Crusoe"},
    {"GenuineTMx86", 0x00F, 0, 15, "Transmeta Efficeon"},
};

constexpr char unknown[] = "Unknown";

}

void ruxComposeProcessorName(int32_t family, int32_t model, const char* vendor, char* name)
{
    for (const NameRow& row : rows) {
        if (strncmp(vendor, row.vendor, 12) == 0 && family == row.family && row.firstModel <= model &&
            model <= row.lastModel) {
            memcpy(name, row.name, sizeof row.name);
            return;
        }
    }
    memcpy(name, unknown, sizeof unknown);
}
