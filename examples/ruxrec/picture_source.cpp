#include "picture_source.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "binary_files.h"
#include "header_writer.h"

namespace {

namespace files = std::filesystem;

bool isPictureName(const files::path& path)
{
    const std::string extension = path.extension().string();
    return extension == ".png" || extension == ".ppm";
}

std::vector<std::string> picturesIn(const std::string& folder)
{
    std::vector<std::string> paths;
    for (const auto& entry : files::directory_iterator(folder))
        if (isPictureName(entry.path())) paths.push_back(entry.path().string());
    if (paths.empty()) throw std::runtime_error(folder + " holds no PNG or PPM pictures");
    std::sort(paths.begin(), paths.end());
    return paths;
}

// What can be read once only.
bool isPipe(const std::string& path)
{
    return path == "-" || (files::exists(path) && !files::is_regular_file(path) && !files::is_directory(path));
}

bool beginsAsY4m(const std::string& path)
{
    char begin[9] = {};
    const size_t count = std::fread(begin, 1, sizeof begin, openForReading(path).get());
    return count == sizeof begin && std::memcmp(begin, "YUV4MPEG2", sizeof begin) == 0;
}

// The code of the frame rate, and the factors beside it.
bool findFrameRate(Ratio wanted, Sequence& sequence)
{
    for (sequence.frameRateExtensionD = 0; sequence.frameRateExtensionD < 32; ++sequence.frameRateExtensionD)
        for (sequence.frameRateExtensionN = 0; sequence.frameRateExtensionN < 4; ++sequence.frameRateExtensionN)
            for (sequence.frameRateCode = 1; sequence.frameRateCode <= 8; ++sequence.frameRateCode) {
                const Ratio rate = frameRate(sequence);
                if (int64_t(rate.numerator) * wanted.denominator == int64_t(wanted.numerator) * rate.denominator)
                    return true;
            }
    return false;
}

// Square samples, or the shape of the picture that comes nearest.
int findAspect(ruxiSize size, Ratio sampleAspect)
{
    if (sampleAspect.numerator <= 0 || sampleAspect.denominator <= 0 ||
        sampleAspect.numerator == sampleAspect.denominator)
        return 1;
    const double shape = double(sampleAspect.numerator) * size.width / (double(sampleAspect.denominator) * size.height);
    const double shapes[] = {4.0 / 3, 16.0 / 9, 2.21};
    const auto nearer = [&](double a, double b) { return std::abs(a - shape) < std::abs(b - shape); };
    return int(std::min_element(std::begin(shapes), std::end(shapes), nearer) - std::begin(shapes)) + 2;
}

}

Sequence sequenceFor(const std::string& what, ruxiSize size, Ratio frameRate, Ratio sampleAspect)
{
    if (size.width > widest || size.height > highest)
        throw std::runtime_error(what + " has pictures of " + std::to_string(size.width) + 'x' +
                                 std::to_string(size.height) + ", beyond the 1920x1152 of the Main Profile");
    Sequence sequence;
    sequence.width = size.width;
    sequence.height = size.height;
    sequence.progressive = true;
    if (frameRate.numerator <= 0 || frameRate.denominator <= 0 || !findFrameRate(frameRate, sequence))
        throw std::runtime_error(what + ": the frame rate " + std::to_string(frameRate.numerator) + ':' +
                                 std::to_string(frameRate.denominator) + " has no code in MPEG-2");
    sequence.aspectRatioCode = findAspect(size, sampleAspect);
    return sequence;
}

std::unique_ptr<Frame> paddedFrame(const Sequence& sequence, const PlanarView& picture)
{
    auto frame = std::make_unique<Frame>(sequence);
    for (int index = 0; index < 3; ++index) {
        const PlanarView::Plane& from = picture.planes[index];
        const Plane& plane = (*frame)[index];
        ruxiCopyReplicateBorder_8u_C1R(from.samples, from.step, from.size, plane.samples, plane.step,
                                       {plane.width, plane.height}, 0, 0);
    }
    return frame;
}

std::unique_ptr<PictureSource> openSource(const std::vector<std::string>& paths, Ratio frameRate)
{
    const std::string& first = paths.front();
    if (paths.size() > 1) return rgbSource(paths, frameRate);
    if (files::is_directory(first)) return rgbSource(picturesIn(first), frameRate);
    if (isPipe(first) || (!isPictureName(first) && beginsAsY4m(first))) return y4mSource(first);
    if (!isPictureName(first))
        throw std::runtime_error(first + " is neither a YUV4MPEG2 file nor a PNG or PPM picture");
    return rgbSource(paths, frameRate);
}
