// The two ways in which reading a stream can fail; both carry one clear line.
#pragma once

#include <stdexcept>

// Nothing more can be made of this input: not a video stream, or a kind that this program does not decode.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What stands here cannot be right: the slice or picture is given up and decoding goes on behind it.
struct Damage : std::runtime_error {
    using std::runtime_error::runtime_error;
};
