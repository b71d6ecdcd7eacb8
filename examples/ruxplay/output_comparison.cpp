#include <algorithm>
#include <cstdio>
#include <limits>
#include <stdexcept>

#include "outputs.h"
#include "psnr.h"
#include "y4m_reader.h"

namespace {

class Comparison : public Output {
public:
    Comparison(const std::string& path, bool allExpected) : path_(path), allExpected_(allExpected), reader_(path)
    {
        std::printf("picture       Y      Cb      Cr   PSNR in dB\n");
    }

    void take(const PlanarView& picture) override
    {
        const ruxiSize size = picture.planes[0].size;
        if (size.width != reader_.size().width || size.height != reader_.size().height ||
            picture.chromaFormat != reader_.chromaFormat())
            throw std::runtime_error(path_ + " holds pictures of another size or format");
        PlanarView reference;
        if (!reader_.next(reference)) throw std::runtime_error(path_ + " holds fewer pictures");
        std::printf("%7zu", ++count_);
        for (int index = 0; index < 3; ++index) {
            const PlanarView::Plane& plane = picture.planes[index];
            const double value =
                psnr(squaredDifference(plane, reference.planes[index].samples, reference.planes[index].step),
                     uint64_t(plane.size.width) * uint64_t(plane.size.height));
            std::printf(" %7.2f", value);
            lowest_[index] = std::min(lowest_[index], value);
        }
        std::printf("\n");
    }

    void finish() override
    {
        std::printf(" lowest");
        for (const double value : lowest_) std::printf(" %7.2f", value);
        std::printf("\n");
        PlanarView reference;
        if (allExpected_ && reader_.next(reference)) throw std::runtime_error(path_ + " holds more pictures");
    }

private:
    const std::string path_;
    const bool allExpected_;
    Y4mReader reader_;
    size_t count_ = 0;
    double lowest_[3] = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::infinity()};
};

}

std::unique_ptr<Output> comparison(const std::string& referencePath, bool allExpected)
{
    return std::make_unique<Comparison>(referencePath, allExpected);
}
