#include "progress.h"

#include <algorithm>
#include <cstdio>

double Progress::seconds() const
{
    return std::chrono::duration<double>(Clock::now() - began_).count();
}

void Progress::advance()
{
    ++done_;
    if (!visible_) return;
    const Clock::time_point now = Clock::now();
    if (now - drawn_ < std::chrono::milliseconds(100) && done_ < expected_) return;
    drawn_ = now;
    draw();
}

void Progress::draw()
{
    constexpr size_t width = 40;
    if (expected_ == 0) {
        std::fprintf(stderr, "\r%zu pictures  %.0f frames/s ", done_, double(done_) / seconds());
        std::fflush(stderr);
        return;
    }
    const size_t filled = std::min(width, width * done_ / expected_);
    const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
    std::fprintf(stderr, "\r[%s] %zu of %zu  %.0f frames/s ", bar.c_str(), done_, expected_, double(done_) / seconds());
    std::fflush(stderr);
}

void Progress::clear()
{
    if (visible_) std::fprintf(stderr, "\r%*s\r", 79, "");
}

void Progress::tell(const std::string& line)
{
    clear();
    std::fprintf(stderr, "%s\n", line.c_str());
}

void Progress::finish()
{
    if (visible_ && done_ > 0) {
        draw();
        std::fprintf(stderr, "\n");
    }
}
