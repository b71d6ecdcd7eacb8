// What a benchmark case is, and the tool's registers of them.
//
// A case names an operation and makes, for a size of image, the work to time: a closure over buffers of its own, and
// the bytes that it moves (read and written), or what else its file of cases counts. A peer does the same work with
// another library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace rux::bench {

struct Size {
    int32_t width;
    int32_t height;
};

struct Work {
    size_t bytes;
    std::function<void()> run;
};

using MakeWork = std::function<Work(Size)>;

struct Case {
    std::string operation;
    MakeWork make;
    std::string peer;      // empty where there is none
    MakeWork makePeer;
};

using Cases = std::vector<Case>;

// One for each file of cases.
void addFrame(Cases& cases);
void addMovement(Cases& cases);
void addChannels(Cases& cases);
void addArith(Cases& cases);
void addStatistics(Cases& cases);
void addColour(Cases& cases);
void addColourTransforms(Cases& cases);
void addFilter(Cases& cases);
void addAnalysis(Cases& cases);
void addResize(Cases& cases);
void addSignal(Cases& cases);
void addVideo(Cases& cases);
void addVideoEncode(Cases& cases);
void addVideoStream(Cases& cases);

}
