// The command line.
#pragma once

#include <string>

#include "command_line.h"

struct Options {
    std::string input, output, picture;
    int mask = 7;             // samples
    double click = 25;        // percent of full scale
    double power = 0.7;
    double window = 20;       // milliseconds
    bool quiet = false;
    bool help = false;
};

Options readOptions(int argc, char** argv);   // throws WrongUsage
std::string helpText();
