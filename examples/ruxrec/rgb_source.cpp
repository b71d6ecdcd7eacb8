#include <stdexcept>

#include "picture.h"
#include "picture_source.h"

namespace {

class RgbSource : public PictureSource {
public:
    RgbSource(const std::vector<std::string>& paths, Ratio frameRate) : paths_(paths), first_(readPicture(paths[0]))
    {
        sequence_ = sequenceFor(paths[0], {first_.width, first_.height}, frameRate, {1, 1});
        for (int index = 0; index < 3; ++index) {
            const ruxiSize size = sizeOf(index);
            planes_[index].resize(size_t(size.width) * size_t(size.height));
        }
    }

    Sequence sequence() const override { return sequence_; }
    size_t expectedPictures() const override { return paths_.size(); }

    std::unique_ptr<Frame> next() override
    {
        if (at_ == paths_.size()) return nullptr;
        const std::string& path = paths_[at_];
        const Picture picture = at_++ == 0 ? std::move(first_) : readPicture(path);
        if (picture.width != sequence_.width || picture.height != sequence_.height)
            throw std::runtime_error(path + " has another size than " + paths_[0]);
        return paddedFrame(sequence_, converted(picture));
    }

private:
    ruxiSize sizeOf(int plane) const
    {
        const ruxiSize size = {sequence_.width, sequence_.height};
        return plane == 0 ? size : chromaSize(size, ChromaFormat::yuv420);
    }

    PlanarView converted(const Picture& picture)
    {
        PlanarView view = {ChromaFormat::yuv420, {}};
        uint8_t* samples[3];
        int32_t steps[3];
        for (int index = 0; index < 3; ++index) {
            samples[index] = planes_[index].data();
            steps[index] = sizeOf(index).width;
            view.planes[index] = {samples[index], steps[index], sizeOf(index)};
        }
        const ruxStatus status =
            ruxiRGBToYCbCr420_8u_C3P3R(picture.pixels.data(), picture.step(), samples, steps, sizeOf(0));
        if (status != ruxStatusOk) throw std::runtime_error(ruxGetStatusString(status));
        return view;
    }

    const std::vector<std::string> paths_;
    Picture first_;
    Sequence sequence_;
    std::vector<uint8_t> planes_[3];
    size_t at_ = 0;
};

}

std::unique_ptr<PictureSource> rgbSource(const std::vector<std::string>& paths, Ratio frameRate)
{
    return std::make_unique<RgbSource>(paths, frameRate);
}
