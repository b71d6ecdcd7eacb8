#include "report.h"

#include <cmath>

namespace rux::bench {
namespace {

double gigabytes(const Row& row, const Timing& timing)
{
    return row.bytes / timing.best * 1e-9;
}

double ratioToPeer(const Row& row)
{
    return row.peerTiming.best / row.levels[3].best;
}

}

void printHeading()
{
    std::printf("%-38s %-6s %10s | %7s %7s %7s %7s GB/s | %5s %5s %5s x px | %-8s %7s %6s %5s\n", "operation", "in",
                "size", "px", "m6", "a6", "w7", "m6", "a6", "w7", "peer", "GB/s", "w7/it", "+-");
}

void printRow(const Row& row)
{
    std::printf("%-38s %-6s %5dx%-4d | %7.2f %7.2f %7.2f %7.2f      | %5.2f %5.2f %5.2f      |", row.operation.c_str(),
                row.place.c_str(), row.size.width, row.size.height, gigabytes(row, row.levels[0]),
                gigabytes(row, row.levels[1]), gigabytes(row, row.levels[2]), gigabytes(row, row.levels[3]),
                row.levels[0].best / row.levels[1].best, row.levels[0].best / row.levels[2].best,
                row.levels[0].best / row.levels[3].best);
    if (row.peer.empty())
        std::printf(" %-8s %7s %6s %4.0f%%\n", "-", "", "", row.levels[3].spread * 100);
    else
        std::printf(" %-8s %7.2f %6.2f %4.0f%%\n", row.peer.c_str(), gigabytes(row, row.peerTiming), ratioToPeer(row),
                    row.levels[3].spread * 100);
    std::fflush(stdout);
}

void writeCsvHeading(std::FILE* file)
{
    std::fprintf(file, "operation,memory,width,height,bytes,px_s,m6_s,a6_s,w7_s,w7_spread,peer,peer_s,w7_to_peer\n");
}

void writeCsvRow(std::FILE* file, const Row& row)
{
    std::fprintf(file, "%s,%s,%d,%d,%zu", row.operation.c_str(), row.place.c_str(), row.size.width, row.size.height,
                 row.bytes);
    for (const Timing& timing : row.levels) std::fprintf(file, ",%.4g", timing.best);
    std::fprintf(file, ",%.3f,%s", row.levels[3].spread, row.peer.c_str());
    if (row.peer.empty())
        std::fprintf(file, ",,\n");
    else
        std::fprintf(file, ",%.4g,%.3f\n", row.peerTiming.best, ratioToPeer(row));
}

void printSummary(const std::vector<Row>& rows)
{
    double logarithms = 0, lowest = HUGE_VAL;
    int count = 0;
    for (const Row& row : rows) {
        if (row.peer.empty()) continue;
        logarithms += std::log(ratioToPeer(row));
        lowest = std::fmin(lowest, ratioToPeer(row));
        ++count;
    }
    if (count > 0)
        std::printf("w7 against its peers: geometric mean %.2f, lowest %.2f, of %d rows\n",
                    std::exp(logarithms / count), lowest, count);
}

}
