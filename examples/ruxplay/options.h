// The command line.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

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

struct WrongUsage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

Options readOptions(int argc, char** argv);   // throws WrongUsage
std::string helpText();
