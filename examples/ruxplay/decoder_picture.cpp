#include "decoder.h"
#include "errors.h"
#include "slice.h"

void Decoder::takeSlice(const StartCode& start, BitReader bits, const BitReader& end)
{
    if (state_ == PictureState::headed) drop("it has no picture coding extension");
    if (state_ == PictureState::extended && beginPicture()) state_ = PictureState::decoding;
    if (state_ != PictureState::decoding) return;
    try {
        SliceDecoder(*picture_, bits, end).decode(start.code);
    } catch (const Damage& damage) {
        pictureIsDamaged_ = true;
        listener_.tell(place() + ", slice " + std::to_string(start.code) + ": " + damage.what());
    }
}

// Returns whether the picture can be decoded.
bool Decoder::beginPicture()
{
    if (!sequence_) {
        drop("it stands before the first sequence header");
        return false;
    }
    const bool isB = header_.type == PictureType::B;
    const Frame* const forward = isB ? earlier_ : later_;
    if (header_.type == PictureType::P && !forward) {
        drop("it is predicted from a picture that the stream does not hold");
        return false;
    }
    // The first B pictures of a closed group need no picture before the group.
    if (isB && (!later_ || (!forward && !group_.closed))) {
        drop("it is predicted from a picture that the stream does not hold");
        return false;
    }
    picture_.emplace(CodedPicture{{sequence_->chromaFormat, &unusedFrame(), {forward, isB ? later_ : nullptr}},
                                  codes_, header_, matrices_, sequence_->macroblocksAcross(),
                                  sequence_->macroblocksDown(), {}});
    picture_->decoded.assign(size_t(picture_->macroblocksAcross) * size_t(picture_->macroblocksDown), false);
    picture_->frame->progressive = sequence_->progressive;
    picture_->frame->topFieldFirst = header_.topFieldFirst;
    pictureIsDamaged_ = false;
    return true;
}

void Decoder::drop(const char* reason)
{
    listener_.tell(place() + ": dropped, " + reason);
    ++report_.dropped;
    state_ = PictureState::none;
}

void Decoder::finishPicture()
{
    if (state_ == PictureState::headed || state_ == PictureState::extended) drop("it holds no slice");
    if (state_ != PictureState::decoding) return;
    state_ = PictureState::none;
    conceal();
    if (header_.repeatFirstField)
        report_.repeatedFields += !sequence_->progressive ? 1 : header_.topFieldFirst ? 4 : 2;

    const Frame& frame = *picture_->frame;
    if (header_.type == PictureType::B) return show(frame);
    if (later_) show(*later_);
    earlier_ = linkIsBroken_ ? nullptr : later_;
    later_ = &frame;
    linkIsBroken_ = false;
}

// Takes what is lost from the previous picture; without one it becomes mid-grey.
void Decoder::conceal()
{
    const Frame* const previous = picture_->reference[0] ? picture_->reference[0] : later_;
    size_t lost = 0;
    for (size_t index = 0; index < picture_->decoded.size(); ++index) {
        if (picture_->decoded[index]) continue;
        ++lost;
        const int x = int(index % size_t(picture_->macroblocksAcross));
        const int y = int(index / size_t(picture_->macroblocksAcross));
        if (previous)
            picture_->frame->copyMacroblock(*previous, x, y);
        else
            picture_->frame->greyMacroblock(x, y);
    }
    if (lost) listener_.tell(place() + ": " + std::to_string(lost) + " macroblocks lost and concealed");
    if (lost || pictureIsDamaged_) ++report_.damagedPictures;
    report_.concealedMacroblocks += lost;
}

Frame& Decoder::unusedFrame()
{
    for (const auto& frame : frames_)
        if (frame.get() != earlier_ && frame.get() != later_) return *frame;
    return *frames_[0];   // not reached: three frames, two references
}

std::string Decoder::place() const
{
    if (report_.pictures == 0) return "before the first picture";
    static const char* const types[] = {"", " (I)", " (P)", " (B)"};
    return "picture " + std::to_string(report_.pictures) + types[int(header_.type)];
}
