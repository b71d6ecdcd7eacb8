// A bar on the terminal's error output, with pictures per second.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

class Progress {
public:
    // expected: 0 where it is not known.
    Progress(size_t expected, bool visible) : expected_(expected), visible_(visible) {}

    void advance();                        // by one picture
    void tell(const std::string& line);    // a line above the bar
    void finish();
    size_t pictures() const { return done_; }
    double seconds() const;

private:
    using Clock = std::chrono::steady_clock;
    void draw();
    void clear();

    const size_t expected_;
    const bool visible_;
    size_t done_ = 0;
    const Clock::time_point began_ = Clock::now();
    Clock::time_point drawn_ = began_;
};
