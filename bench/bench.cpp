// ruxbench: times every operation at every level, and its peer beside it.
//
//     ruxbench [--filter TEXT] [--csv FILE] [--milliseconds N] [--place first|second|memory]
//
// Levels and peer take turns over several rounds, so that a noisy moment of the machine falls on all of them; a row
// tells the best round of each, and how far the median of w7 lies above its best.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "bench.h"
#include "frame/dispatch.h"
#include "report.h"

#ifdef RUX_WITH_OPENCV
#include <opencv2/core.hpp>
#endif

using namespace rux::bench;

namespace {

struct Options {
    std::string filter;
    std::string csv;
    std::string place;
    double milliseconds = 3;   // the shortest time of one round of one level
};

struct Place {
    const char* name;
    Size size;
};

// One-byte images of 4 KiB, 128 KiB and 1920x1080: with two or three of four bytes an element they sit in the first
// cache, the second, and memory.
constexpr Place places[] = {{"first", {64, 64}}, {"second", {256, 256}}, {"memory", {1920, 1080}}};
constexpr int rounds = 7;

double secondsOf(const Work& work, size_t repetitions)
{
    const auto start = std::chrono::steady_clock::now();
    for (size_t i = 0; i < repetitions; ++i) work.run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / repetitions;
}

size_t repetitionsFor(const Work& work, double milliseconds)
{
    work.run();   // warm
    size_t repetitions = 1;
    while (secondsOf(work, repetitions) * repetitions < milliseconds * 1e-3 && repetitions < (1u << 24))
        repetitions *= 2;
    return repetitions;
}

Timing summary(std::vector<double> seconds)
{
    std::sort(seconds.begin(), seconds.end());
    return {seconds.front(), seconds[seconds.size() / 2] / seconds.front() - 1};
}

Row timeCase(const Case& timed, const Place& place, double milliseconds)
{
    const Work work = timed.make(place.size);
    const Work peer = timed.makePeer ? timed.makePeer(place.size) : Work{};
    std::vector<double> seconds[5];
    size_t repetitions[5] = {};
    for (int round = 0; round < rounds; ++round) {
        for (int32_t level = 0; level < 4; ++level) {
            ruxFillSlots(level);
            if (round == 0) repetitions[level] = repetitionsFor(work, milliseconds);
            seconds[level].push_back(secondsOf(work, repetitions[level]));
        }
        if (peer.run) {
            if (round == 0) repetitions[4] = repetitionsFor(peer, milliseconds);
            seconds[4].push_back(secondsOf(peer, repetitions[4]));
        }
    }
    Row row{timed.operation, place.name, place.size, work.bytes, {}, peer.run ? timed.peer : "", {}};
    for (int level = 0; level < 4; ++level) row.levels[level] = summary(seconds[level]);
    if (peer.run) row.peerTiming = summary(seconds[4]);
    return row;
}

Options parse(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; i += 2) {
        const std::string name = argv[i];
        if (i + 1 == argc) throw std::runtime_error(name + " wants a value");
        const std::string value = argv[i + 1];
        if (name == "--filter") options.filter = value;
        else if (name == "--csv") options.csv = value;
        else if (name == "--place") options.place = value;
        else if (name == "--milliseconds") options.milliseconds = std::atof(value.c_str());
        else throw std::runtime_error("unknown option " + name);
    }
    return options;
}

void run(const Options& options)
{
    std::FILE* csv = nullptr;
    if (!options.csv.empty() && !(csv = std::fopen(options.csv.c_str(), "w")))
        throw std::runtime_error("cannot write " + options.csv);
    if (csv) writeCsvHeading(csv);

    Cases cases;
    addFrame(cases);
    addMovement(cases);
    addChannels(cases);
    addArith(cases);
    addStatistics(cases);
    addColour(cases);
    addColourTransforms(cases);
    addFilter(cases);
    addResize(cases);
    addAnalysis(cases);
    addSignal(cases);
    addVideo(cases);
    addVideoEncode(cases);
    addVideoStream(cases);

    printHeading();
    std::vector<Row> rows;
    for (const Case& timed : cases) {
        if (timed.operation.find(options.filter) == std::string::npos) continue;
        for (const Place& place : places) {
            if (!options.place.empty() && options.place != place.name) continue;
            rows.push_back(timeCase(timed, place, options.milliseconds));
            printRow(rows.back());
            if (csv) writeCsvRow(csv, rows.back());
        }
    }
    printSummary(rows);
    if (csv) std::fclose(csv);
}

}

int main(int argc, char** argv)
{
    try {
#ifdef RUX_WITH_OPENCV
        cv::setNumThreads(1);
#endif
        run(parse(argc, argv));
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "ruxbench: %s\n", problem.what());
        return 1;
    }
    return 0;
}
