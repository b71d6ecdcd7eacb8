#include <stdexcept>

#include "picture_source.h"
#include "y4m_reader.h"

namespace {

class Y4mSource : public PictureSource {
public:
    explicit Y4mSource(const std::string& path) : reader_(path)
    {
        if (reader_.chromaFormat() != ChromaFormat::yuv420)
            throw std::runtime_error(reader_.name() + " is not 4:2:0, which is what this program codes");
        if (reader_.interlaced())
            throw std::runtime_error(reader_.name() + " is interlaced; this program codes progressive pictures");
        sequence_ = sequenceFor(reader_.name(), reader_.size(), reader_.frameRate(), reader_.sampleAspect());
    }

    Sequence sequence() const override { return sequence_; }
    size_t expectedPictures() const override { return reader_.expectedPictures(); }

    std::unique_ptr<Frame> next() override
    {
        PlanarView picture;
        return reader_.next(picture) ? paddedFrame(sequence_, picture) : nullptr;
    }

private:
    Y4mReader reader_;
    Sequence sequence_;
};

}

std::unique_ptr<PictureSource> y4mSource(const std::string& path)
{
    return std::make_unique<Y4mSource>(path);
}
