// Files that are closed when they go, in binary on every system.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

using File = std::shared_ptr<FILE>;

// Both throw std::runtime_error with the reason; "-" is the standard input or output.
File openForReading(const std::string& path);
File openForWriting(const std::string& path);

bool isTerminal(FILE* file);
