#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "binary_files.h"
#include "outputs.h"
#include "timing.h"

namespace {

class Y4mFile : public Output {
public:
    Y4mFile(const std::string& path, const Sequence& sequence, ruxiSize size, bool topFieldFirst)
        : path_(path), file_(openForWriting(path))
    {
        const Ratio rate = frameRate(sequence), aspect = sampleAspect(sequence, size);
        std::fprintf(file_.get(), "YUV4MPEG2 W%d H%d F%d:%d I%c A%d:%d C%s\n", int(size.width), int(size.height),
                     rate.numerator, rate.denominator, sequence.progressive ? 'p' : topFieldFirst ? 't' : 'b',
                     aspect.numerator, aspect.denominator,
                     sequence.chromaFormat == ChromaFormat::yuv420 ? "420mpeg2" : "422");
        check();
    }

    void take(const PlanarView& picture) override
    {
        std::fputs("FRAME\n", file_.get());
        for (const PlanarView::Plane& plane : picture.planes)
            for (int row = 0; row < plane.size.height; ++row)
                std::fwrite(plane.samples + int64_t(row) * plane.step, 1, size_t(plane.size.width), file_.get());
        check();
    }

    void finish() override
    {
        std::fflush(file_.get());
        check();
    }

private:
    void check() const
    {
        if (std::ferror(file_.get())) throw std::runtime_error("cannot write " + path_ + ": " + std::strerror(errno));
    }

    const std::string path_;
    const File file_;
};

}

std::unique_ptr<Output> y4mFile(const std::string& path, const Sequence& sequence, ruxiSize size, bool topFieldFirst)
{
    return std::make_unique<Y4mFile>(path, sequence, size, topFieldFirst);
}
