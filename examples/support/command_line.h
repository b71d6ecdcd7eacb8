// What command lines share.
#pragma once

#include <charconv>
#include <stdexcept>
#include <string_view>

struct WrongUsage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A whole number from least to most.
template <typename Number>
bool readNumber(std::string_view text, Number least, Number most, Number& number)
{
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size() && number >= least && number <= most;
}
