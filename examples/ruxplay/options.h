// The command line.
#pragma once

#include <optional>
#include <string>

#include "command_line.h"
#include "ruxlib.h"

struct Options {
    std::string input;
    std::string pngFolder;
    std::string y4m;
    std::string sheet;
    std::string reference;
    std::optional<ruxiSize> scale;
    size_t frames = 0;    // 0: all
    bool quiet = false;
    bool help = false;
};

Options readOptions(int argc, char** argv);   // throws WrongUsage
std::string helpText();
