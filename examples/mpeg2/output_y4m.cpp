#include "output.h"
#include "timing.h"
#include "whole_file.h"

namespace {

class Y4mFile : public Output {
public:
    Y4mFile(const std::string& path, const Sequence& sequence, ruxiSize size, bool topFieldFirst) : file_(path)
    {
        const Ratio rate = frameRate(sequence), aspect = sampleAspect(sequence, size);
        const auto ratio = [](Ratio value) {
            return std::to_string(value.numerator) + ':' + std::to_string(value.denominator);
        };
        write("YUV4MPEG2 W" + std::to_string(size.width) + " H" + std::to_string(size.height) + " F" + ratio(rate) +
              " I" + (sequence.progressive ? 'p' : topFieldFirst ? 't' : 'b') + " A" + ratio(aspect) + " C" +
              (sequence.chromaFormat == ChromaFormat::yuv420 ? "420mpeg2" : "422") + '\n');
    }

    void take(const PlanarView& picture) override
    {
        write("FRAME\n");
        for (const PlanarView::Plane& plane : picture.planes)
            for (int row = 0; row < plane.size.height; ++row)
                file_.write(plane.samples + int64_t(row) * plane.step, size_t(plane.size.width));
    }

    void finish() override { file_.finish(); }

private:
    void write(const std::string& text) { file_.write(text.data(), text.size()); }

    WholeFile file_;
};

}

std::unique_ptr<Output> y4mFile(const std::string& path, const Sequence& sequence, ruxiSize size, bool topFieldFirst)
{
    return std::make_unique<Y4mFile>(path, sequence, size, topFieldFirst);
}
