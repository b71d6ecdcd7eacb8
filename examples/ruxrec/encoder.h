// Codes pictures into a stream: their kinds, their order, their references.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "coding_picture.h"
#include "motion_search.h"
#include "rate_control.h"

struct EncoderSettings {
    int quantiser = 4;
    int64_t bitRate = 0;     // bits a second; 0: a constant quantiser
    GroupShape shape = {12, 2};
    int searchRange = 31;
};

class Encoder {
public:
    struct Listener {
        virtual ~Listener() = default;
        virtual void write(const std::vector<uint8_t>& bytes) = 0;
        // A picture in the order of display, and what a decoder makes of it.
        virtual void show(const Frame& source, const Frame& decoded, PictureType type) = 0;
    };

    Encoder(const Sequence& sequence, const EncoderSettings& settings, Listener& listener);

    void take(std::unique_ptr<Frame> source);   // in the order of display
    void finish();

private:
    struct Reference {
        std::unique_ptr<Frame> source;
        std::unique_ptr<Frame> decoded;
        size_t number = 0;      // in the order of display
        PictureType type = PictureType::I;
    };

    bool isIntra(size_t number) const { return number % size_t(settings_.shape.length) == 0; }
    void codeWaiting();
    std::unique_ptr<Frame> code(const Frame& source, size_t number, PictureType type);
    void beginGroup(size_t firstPicture, std::vector<uint8_t>& stream);
    void search(CodingPicture& picture, size_t number, int quantiser);
    void chooseRanges(CodingPicture& picture) const;

    const Sequence sequence_;
    const EncoderSettings settings_;
    Listener& listener_;
    const EncodeTables tables_;
    const std::unique_ptr<RateControl> rate_;
    std::vector<std::unique_ptr<Frame>> waiting_;   // not coded yet, in the order of display
    size_t taken_ = 0;
    size_t groupBegin_ = 0;     // its first picture to display
    Reference earlier_, later_;
    MotionField lastMotion_;    // of the last P picture
    size_t lastDistance_ = 1;   // to its reference, in pictures
};
