// Decodes a stream: follows its headers, keeps the reference pictures and shows the pictures in their order of display.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "coded_picture.h"
#include "frame.h"
#include "headers.h"
#include "stream.h"

struct DecodingReport {
    size_t pictures = 0;          // begun in the stream
    size_t shown = 0;
    size_t dropped = 0;
    size_t damagedPictures = 0;
    size_t concealedMacroblocks = 0;
    size_t repeatedFields = 0;    // that a display would show again
};

class Decoder {
public:
    struct Listener {
        virtual ~Listener() = default;
        virtual void begin(const Sequence& sequence) = 0;
        virtual bool show(const Frame& frame) = 0;              // false: no more pictures are wanted
        virtual void tell(const std::string& line) = 0;         // something is wrong with the stream
    };

    Decoder(VideoStream& stream, Listener& listener) : stream_(stream), listener_(listener) {}

    // Throws Refusal, with all pictures before shown.
    DecodingReport run();

private:
    // decoder.cpp
    void take(const StartCode& start);
    void takeSequenceHeader(BitReader bits, const BitReader& end);
    void takeExtension(BitReader bits, const BitReader& end);
    void takeSequenceExtension(BitReader& bits, const BitReader& end);
    void takePictureHeader(BitReader bits, const BitReader& end);
    void flush();
    void show(const Frame& frame);

    // decoder_picture.cpp
    void takeSlice(const StartCode& start, BitReader bits, const BitReader& end);
    bool beginPicture();
    void drop(const char* reason);
    void finishPicture();
    void conceal();
    Frame& unusedFrame();
    std::string place() const;

    VideoStream& stream_;
    Listener& listener_;
    const CodeTables codes_;
    DecodingReport report_;
    bool enough_ = false;

    std::optional<Sequence> headedSequence_;   // its header has been read, its extension not yet
    std::optional<Sequence> sequence_;
    Matrices matrices_;
    GroupHeader group_;
    bool linkIsBroken_ = false;                // the next reference picture begins anew

    enum class PictureState { none, headed, extended, decoding } state_ = PictureState::none;
    PictureHeader header_;
    std::optional<CodedPicture> picture_;
    bool pictureIsDamaged_ = false;

    std::unique_ptr<Frame> frames_[3];
    const Frame* earlier_ = nullptr;           // the last two reference pictures
    const Frame* later_ = nullptr;
};
