// The command line.
#pragma once

#include <string>
#include <vector>

#include "command_line.h"
#include "encoder.h"
#include "timing.h"

struct Options {
    std::vector<std::string> inputs;
    std::string output;
    std::string reconstruction;
    EncoderSettings encoder;
    Ratio frameRate = {25, 1};   // of pictures
    size_t frames = 0;           // 0: all
    bool quiet = false;
    bool help = false;
};

Options readOptions(int argc, char** argv);   // throws WrongUsage
std::string helpText();
