#include "encoder.h"

#include <algorithm>
#include <cstdlib>

#include "header_writer.h"
#include "motion_code.h"
#include "slice_coder.h"

namespace {

constexpr int unusedFCode = 15;

// Up to here table one codes I pictures in fewer bits, with coarser quantisers table zero does. Found by trial.
constexpr int largestQuantiserOfTableOne = 10;

// The field of one distance as a guess at that of another.
MotionField scaled(const MotionField& field, int distance, int ofDistance)
{
    MotionField result = field;
    for (MotionVector& vector : result)
        vector = {vector.x * distance / ofDistance, vector.y * distance / ofDistance};
    return result;
}

}

Encoder::Encoder(const Sequence& sequence, const EncoderSettings& settings, Listener& listener)
    : sequence_(sequence), settings_(settings), listener_(listener),
      rate_(settings.bitRate ? targetRate(settings.bitRate, sequence, settings.shape)
                             : constantQuantiser(settings.quantiser))
{
}

// A picture waits as a B picture until there is a reference picture behind it.
void Encoder::take(std::unique_ptr<Frame> source)
{
    waiting_.push_back(std::move(source));
    const size_t number = taken_++;
    if (isIntra(number) || waiting_.size() > size_t(settings_.shape.bPictures)) codeWaiting();
}

void Encoder::finish()
{
    if (!waiting_.empty()) codeWaiting();
    if (later_.decoded) listener_.show(*later_.source, *later_.decoded, later_.type);
    BitWriter bits(2);
    bits.putStartCode(sequenceEnd);
    std::vector<uint8_t> stream;
    bits.moveTo(stream);
    listener_.write(stream);
}

// The last of those that wait becomes a reference picture, those before B pictures.
void Encoder::codeWaiting()
{
    const size_t number = taken_ - 1, first = taken_ - waiting_.size();
    if (later_.decoded) listener_.show(*later_.source, *later_.decoded, later_.type);
    earlier_ = std::move(later_);
    later_ = {};
    const PictureType type = isIntra(number) ? PictureType::I : PictureType::P;
    std::unique_ptr<Frame> decoded = code(*waiting_.back(), number, type);
    later_ = {std::move(waiting_.back()), std::move(decoded), number, type};
    waiting_.pop_back();
    for (size_t index = 0; index < waiting_.size(); ++index)
        listener_.show(*waiting_[index], *code(*waiting_[index], first + index, PictureType::B), PictureType::B);
    waiting_.clear();
}

std::unique_ptr<Frame> Encoder::code(const Frame& source, size_t number, PictureType type)
{
    std::unique_ptr<Frame> decoded = std::make_unique<Frame>(sequence_);
    CodingPicture picture{{sequence_.chromaFormat, decoded.get(), {}}, sequence_, tables_, source, {}, {}};
    picture.header.type = type;
    picture.header.framePredictionFrameDct = true;
    if (type != PictureType::I) picture.reference[0] = earlier_.decoded.get();
    if (type == PictureType::B) picture.reference[1] = later_.decoded.get();

    std::vector<uint8_t> stream;
    if (type == PictureType::I) beginGroup(earlier_.decoded ? earlier_.number + 1 : 0, stream);
    const int quantiser = rate_->beginPicture(type);
    picture.header.intraTableOne = type == PictureType::I && quantiser <= largestQuantiserOfTableOne;
    search(picture, number, quantiser);
    chooseRanges(picture);
    const size_t before = stream.size();
    BitWriter bits(16);
    writePictureHeader(bits, picture.header, int((number - groupBegin_) % 1024));
    bits.moveTo(stream);
    SliceCoder slices(picture, *rate_);
    for (int row = 0; row < picture.down(); ++row) slices.code(row, stream);
    rate_->endPicture((stream.size() - before) * 8);
    listener_.write(stream);
    return decoded;
}

void Encoder::beginGroup(size_t firstPicture, std::vector<uint8_t>& stream)
{
    groupBegin_ = firstPicture;
    BitWriter bits(16);
    writeSequenceHeader(bits, sequence_, settings_.bitRate);
    writeGroupHeader(bits, sequence_, firstPicture, waiting_.size() == 1);
    bits.moveTo(stream);
}

void Encoder::search(CodingPicture& picture, size_t number, int quantiser)
{
    const SearchSettings settings = {settings_.searchRange, quantiser};
    const int lastDistance = int(lastDistance_);
    if (picture.header.type == PictureType::P) {
        lastDistance_ = number - earlier_.number;
        const MotionField hints = scaled(lastMotion_, int(lastDistance_), lastDistance);
        lastMotion_ = picture.motion[0] = MotionSearch(picture, *picture.reference[0], settings).run(hints);
    } else if (picture.header.type == PictureType::B) {
        const Frame* const references[2] = {earlier_.decoded.get(), later_.decoded.get()};
        const int distances[2] = {int(number - earlier_.number), int(number) - int(later_.number)};
        for (int direction = 0; direction < 2; ++direction)
            picture.motion[direction] = MotionSearch(picture, *references[direction], settings)
                                            .run(scaled(lastMotion_, distances[direction], lastDistance));
    }
}

// The shortest codes that hold the vectors that were found.
void Encoder::chooseRanges(CodingPicture& picture) const
{
    for (int direction = 0; direction < 2; ++direction) {
        auto& fCode = picture.header.fCode[direction];
        fCode[0] = fCode[1] = unusedFCode;
        if (!picture.reference[direction]) continue;
        int reach[2] = {};
        for (const MotionVector vector : picture.motion[direction]) {
            reach[0] = std::max(reach[0], std::abs(vector.x));
            reach[1] = std::max(reach[1], std::abs(vector.y));
        }
        for (int component = 0; component < 2; ++component) fCode[component] = fCodeFor(reach[component]);
    }
}
