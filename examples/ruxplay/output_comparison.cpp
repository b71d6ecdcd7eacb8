#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "binary_files.h"
#include "outputs.h"

namespace {

double psnr(const PlanarView::Plane& plane, const uint8_t* reference)
{
    uint64_t squares = 0;
    for (int row = 0; row < plane.size.height; ++row, reference += plane.size.width) {
        const uint8_t* const samples = plane.samples + int64_t(row) * plane.step;
        for (int column = 0; column < plane.size.width; ++column) {
            const int difference = samples[column] - reference[column];
            squares += uint64_t(difference * difference);
        }
    }
    if (squares == 0) return std::numeric_limits<double>::infinity();
    return 10 * std::log10(255.0 * 255.0 * plane.size.width * plane.size.height / double(squares));
}

class Comparison : public Output {
public:
    Comparison(const std::string& path, bool allExpected)
        : path_(path), allExpected_(allExpected), file_(openForReading(path))
    {
        std::istringstream header(readLine());
        std::string word;
        header >> word;
        if (word != "YUV4MPEG2") throw std::runtime_error(path + " is no YUV4MPEG2 file");
        while (header >> word) {
            if (word[0] == 'W') width_ = std::atoi(word.c_str() + 1);
            if (word[0] == 'H') height_ = std::atoi(word.c_str() + 1);
            if (word[0] == 'C') sampling_ = word.substr(1);
        }
        std::printf("picture       Y      Cb      Cr   PSNR in dB\n");
    }

    void take(const PlanarView& picture) override
    {
        const ruxiSize size = picture.planes[0].size;
        const bool is420 = sampling_.rfind("420", 0) == 0 && sampling_.find("p1") == std::string::npos;
        if (size.width != width_ || size.height != height_ || (!is420 && sampling_ != "422") ||
            is420 != (picture.chromaFormat == ChromaFormat::yuv420))
            throw std::runtime_error(path_ + " holds pictures of another size or format");
        if (readLine().rfind("FRAME", 0) != 0) throw std::runtime_error(path_ + " holds fewer pictures");
        std::printf("%7zu", ++count_);
        for (int plane = 0; plane < 3; ++plane) {
            const ruxiSize shown = picture.planes[plane].size;
            samples_.resize(size_t(shown.width) * size_t(shown.height));
            if (std::fread(samples_.data(), 1, samples_.size(), file_.get()) != samples_.size())
                throw std::runtime_error(path_ + " is cut short");
            const double value = psnr(picture.planes[plane], samples_.data());
            std::printf(" %7.2f", value);
            lowest_[plane] = std::min(lowest_[plane], value);
        }
        std::printf("\n");
    }

    void finish() override
    {
        std::printf(" lowest");
        for (const double value : lowest_) std::printf(" %7.2f", value);
        std::printf("\n");
        if (allExpected_ && !readLine().empty()) throw std::runtime_error(path_ + " holds more pictures");
    }

private:
    std::string readLine()
    {
        constexpr size_t longest = 1000;
        std::string line;
        for (int character; line.size() < longest && (character = std::fgetc(file_.get())) != EOF && character != '\n';)
            line += char(character);
        return line;
    }

    const std::string path_;
    const bool allExpected_;
    const File file_;
    int width_ = 0;
    int height_ = 0;
    std::string sampling_ = "420";
    size_t count_ = 0;
    std::vector<uint8_t> samples_;
    double lowest_[3] = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::infinity()};
};

}

std::unique_ptr<Output> comparison(const std::string& referencePath, bool allExpected)
{
    return std::make_unique<Comparison>(referencePath, allExpected);
}
