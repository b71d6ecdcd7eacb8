#include "y4m_reader.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace {

constexpr int largestSide = 16383;

int readNumber(const std::string& text)
{
    int number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() ? number : -1;
}

// NUMERATOR:DENOMINATOR; -1:-1 where it is none.
Ratio readRatio(const std::string& text)
{
    const size_t colon = text.find(':');
    if (colon == std::string::npos) return {-1, -1};
    return {readNumber(text.substr(0, colon)), readNumber(text.substr(colon + 1))};
}

}

Y4mReader::Y4mReader(const std::string& path)
    : path_(path == "-" ? "standard input" : path), file_(openForReading(path))
{
    readHeader();
    for (int plane = 0; plane < 3; ++plane) {
        const ruxiSize size = plane == 0 ? size_ : chromaSize(size_, chromaFormat_);
        samples_[plane].resize(size_t(size.width) * size_t(size.height));
    }
}

void Y4mReader::readHeader()
{
    const std::string line = readLine();
    headerBytes_ = line.size() + 1;
    std::istringstream header(line);
    std::string word;
    header >> word;
    if (word != "YUV4MPEG2") throw std::runtime_error(path_ + " is no YUV4MPEG2 file");
    std::string sampling = "420";
    while (header >> word) {
        const std::string value = word.substr(1);
        if (word[0] == 'W') size_.width = readNumber(value);
        if (word[0] == 'H') size_.height = readNumber(value);
        if (word[0] == 'C') sampling = value;
        if (word[0] == 'F') frameRate_ = readRatio(value);
        if (word[0] == 'A') sampleAspect_ = readRatio(value);
        if (word[0] == 'I') interlaced_ = value == "t" || value == "b" || value == "m";
    }
    if (size_.width < 1 || size_.height < 1 || size_.width > largestSide || size_.height > largestSide)
        throw std::runtime_error(path_ + " gives no size from 1x1 to 16383x16383");
    if (frameRate_.numerator < 0 || frameRate_.denominator < 0) throw std::runtime_error(path_ + " has no frame rate");
    if (sampling == "422")
        chromaFormat_ = ChromaFormat::yuv422;
    else if (sampling.rfind("420", 0) != 0 || sampling.find("p1") != std::string::npos)
        throw std::runtime_error(path_ + " has samples of the kind " + sampling + ", neither 420 nor 422 in 8 bits");
}

bool Y4mReader::next(PlanarView& picture)
{
    const std::string line = readLine();
    if (line.empty() && std::feof(file_.get())) return false;
    const std::string place = path_ + ", picture " + std::to_string(++read_);
    if (line.rfind("FRAME", 0) != 0) throw std::runtime_error(place + ": no FRAME line");
    picture.chromaFormat = chromaFormat_;
    for (int plane = 0; plane < 3; ++plane) {
        std::vector<uint8_t>& samples = samples_[plane];
        if (std::fread(samples.data(), 1, samples.size(), file_.get()) != samples.size())
            throw std::runtime_error(place + (std::ferror(file_.get()) ? ": cannot be read" : ": cut short"));
        const ruxiSize size = plane == 0 ? size_ : chromaSize(size_, chromaFormat_);
        picture.planes[plane] = {samples.data(), size.width, size};
    }
    return true;
}

size_t Y4mReader::expectedPictures() const
{
    std::error_code failure;
    const uintmax_t bytes = std::filesystem::file_size(path_, failure);
    if (failure || bytes < headerBytes_) return 0;
    const size_t each = sizeof "FRAME" + samples_[0].size() + samples_[1].size() + samples_[2].size();
    return size_t(bytes - headerBytes_) / each;
}

std::string Y4mReader::readLine()
{
    constexpr size_t longest = 1000;
    std::string line;
    for (int character; line.size() < longest && (character = std::fgetc(file_.get())) != EOF && character != '\n';)
        line += char(character);
    if (std::ferror(file_.get())) throw std::runtime_error(path_ + " cannot be read: " + std::strerror(errno));
    return line;
}
