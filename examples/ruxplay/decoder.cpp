#include "decoder.h"

#include "errors.h"

namespace {

void requireWhole(const BitReader& bits, const BitReader& end)
{
    if (bits.isBehind(end)) throw Damage("a header is cut short");
}

}

DecodingReport Decoder::run()
{
    try {
        for (const StartCode& start : stream_.startCodes()) {
            take(start);
            if (enough_) return report_;
        }
        finishPicture();
    } catch (const Refusal&) {
        flush();
        throw;
    }
    flush();
    if (!sequence_) throw Refusal("holds no MPEG-2 picture");
    return report_;
}

void Decoder::take(const StartCode& start)
{
    BitReader bits = stream_.readerAt(start.begin);
    const BitReader end = stream_.readerAt(start.end);
    if (start.code >= firstSliceStart && start.code <= lastSliceStart) return takeSlice(start, bits, end);
    if (start.code != extensionStart && (start.code == pictureStart || start.code >= sequenceHeaderStart))
        finishPicture();
    try {
        switch (start.code) {
        case sequenceHeaderStart: takeSequenceHeader(bits, end); break;
        case extensionStart: takeExtension(bits, end); break;
        case groupStart:
            group_ = readGroupHeader(bits);
            requireWhole(bits, end);
            linkIsBroken_ |= group_.brokenLink && !group_.closed;
            break;
        case pictureStart: takePictureHeader(bits, end); break;
        case sequenceEnd: flush(); break;
        default: break;   // user data, and codes that say nothing to a decoder
        }
    } catch (const Damage& damage) {
        listener_.tell(place() + ": " + damage.what());
        if (state_ == PictureState::headed) drop("its headers are damaged");
    }
}

void Decoder::takeSequenceHeader(BitReader bits, const BitReader& end)
{
    Sequence sequence;
    Matrices matrices;
    readSequenceHeader(bits, sequence, matrices);
    requireWhole(bits, end);
    headedSequence_ = sequence;
    matrices_ = matrices;
}

void Decoder::takeExtension(BitReader bits, const BitReader& end)
{
    switch (bits.read(4)) {
    case sequenceExtension: takeSequenceExtension(bits, end); break;
    case matrixExtension: readMatrixExtension(bits, matrices_); break;
    case pictureCodingExtension:
        if (state_ != PictureState::headed) break;
        readPictureCodingExtension(bits, header_);
        requireWhole(bits, end);
        state_ = PictureState::extended;
        break;
    case sequenceScalableExtension:
    case spatialScalableExtension:
    case temporalScalableExtension: throw Refusal("scalable streams are not supported");
    default: break;   // display and copyright
    }
}

void Decoder::takeSequenceExtension(BitReader& bits, const BitReader& end)
{
    if (!headedSequence_) return;
    Sequence sequence = *headedSequence_;
    headedSequence_.reset();
    readSequenceExtension(bits, sequence);
    requireWhole(bits, end);
    if (!sequence_) {
        for (auto& frame : frames_) frame = std::make_unique<Frame>(sequence);
        sequence_ = sequence;
        listener_.begin(sequence);
    } else if (sequence.width != sequence_->width || sequence.height != sequence_->height ||
               sequence.progressive != sequence_->progressive || sequence.chromaFormat != sequence_->chromaFormat) {
        throw Refusal("the pictures change their size or format within the stream, which is not supported");
    }
}

void Decoder::takePictureHeader(BitReader bits, const BitReader& end)
{
    ++report_.pictures;
    state_ = PictureState::headed;
    header_ = readPictureHeader(bits);
    requireWhole(bits, end);
    if (headedSequence_ && !sequence_) throw Refusal("MPEG-1 video is not supported");
}

void Decoder::flush()
{
    if (later_ && !enough_) show(*later_);
    earlier_ = later_ = nullptr;
}

void Decoder::show(const Frame& frame)
{
    ++report_.shown;
    if (!listener_.show(frame)) enough_ = true;
}
