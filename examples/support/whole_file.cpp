#include "whole_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace {

bool isDevice(const std::string& path)
{
    std::error_code failure;
    const auto status = std::filesystem::status(path, failure);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

}

WholeFile::WholeFile(const std::string& path) : path_(path)
{
    if (path == "-" || isDevice(path)) {
        file_ = openForWriting(path);
        return;
    }
    try {
        file_ = openForWriting(path + ".partial");
    } catch (const std::runtime_error&) {
        throw std::runtime_error("cannot open " + path + ": " + std::strerror(errno));
    }
    written_ = path + ".partial";
}

WholeFile::~WholeFile()
{
    file_.reset();
    std::error_code ignored;
    if (!written_.empty()) std::filesystem::remove(written_, ignored);
}

void WholeFile::write(const void* bytes, size_t count)
{
    if (std::fwrite(bytes, 1, count, file_.get()) != count) fail();
}

void WholeFile::finish()
{
    if (std::fflush(file_.get()) != 0) fail();
    file_.reset();
    if (written_.empty()) return;
    std::error_code failure;
    std::filesystem::rename(written_, path_, failure);
    if (failure) throw std::runtime_error("cannot write " + path_ + ": " + failure.message());
    written_.clear();
}

void WholeFile::fail() const
{
    throw std::runtime_error("cannot write " + (path_ == "-" ? "the standard output" : path_) + ": " +
                             std::strerror(errno));
}
