// The table to read and the CSV.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "bench.h"

namespace rux::bench {

struct Timing {
    double best = 0;     // seconds a call
    double spread = 0;   // how much the median lies above the best, as a share of it
};

struct Row {
    std::string operation;
    std::string place;   // which memory the buffers sit in
    Size size;
    size_t bytes;
    Timing levels[4];
    std::string peer;
    Timing peerTiming;
};

void printHeading();
void printRow(const Row& row);
void writeCsvHeading(std::FILE* file);
void writeCsvRow(std::FILE* file, const Row& row);

// The geometric mean and the minimum of w7 against its peers.
void printSummary(const std::vector<Row>& rows);

}
