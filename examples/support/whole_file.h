// A file that exists under its name when it is whole, and not before: it is written beside it and renamed at the end.
#pragma once

#include <string>

#include "binary_files.h"

class WholeFile {
public:
    // "-" is the standard output; that and devices are written as they stand. Throws std::runtime_error, as all here.
    explicit WholeFile(const std::string& path);
    ~WholeFile();   // what has not been finished is removed
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    void write(const void* bytes, size_t count);
    void finish();

private:
    [[noreturn]] void fail() const;

    const std::string path_;
    std::string written_;   // the name while it is written; empty where that is the path itself
    File file_;
};
