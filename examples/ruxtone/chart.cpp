#include "chart.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr int lineWidth = 2;

int between(double value, int least, int most)
{
    return std::clamp(int(std::lround(std::clamp(value, -1e6, 1e6))), least, most);
}

void drawRun(Picture& picture, int x, int y, int otherY, int width, Colour colour)
{
    fill(picture, x, std::min(y, otherY), width, std::abs(otherY - y) + width, colour);
}

}

int Panel::x(double second) const
{
    return left + between(second / seconds * width, 0, width - lineWidth);
}

int Panel::y(double value) const
{
    return top + between((most - value) / (most - least) * (height - lineWidth), 0, height - lineWidth);
}

void fill(Picture& picture, int left, int top, int width, int height, Colour colour)
{
    for (int y = top; y < top + height; ++y)
        for (int x = left; x < left + width; ++x) {
            uint8_t* const pixel = picture.at(x, y);
            pixel[0] = colour.red;
            pixel[1] = colour.green;
            pixel[2] = colour.blue;
        }
}

Colour dimmed(Colour colour)
{
    return {uint8_t(colour.red / 2), uint8_t(colour.green / 2), uint8_t(colour.blue / 2)};
}

std::vector<Tick> ticks(double least, double most, int count)
{
    const double rough = (most - least) / count, power = std::pow(10, std::floor(std::log10(rough)));
    const double step = power * (rough <= power ? 1 : rough <= 2 * power ? 2 : rough <= 5 * power ? 5 : 10);
    const int decimals = std::max(0, -int(std::floor(std::log10(step) + 1e-9)));
    std::vector<Tick> result;
    for (double index = std::ceil(least / step); index * step <= most + step * 1e-6; ++index) {
        char text[40];
        std::snprintf(text, sizeof text, "%.*f", decimals, index * step);
        result.push_back({index * step, text});
    }
    return result;
}

void drawPanel(Picture& picture, const Panel& panel, const std::vector<Tick>& vertical)
{
    fill(picture, panel.left, panel.top, panel.width, panel.height, panelColour);
    for (const Tick& tick : ticks(0, panel.seconds, 10))
        fill(picture, panel.x(tick.value), panel.top, 1, panel.height, gridColour);
    for (const Tick& tick : vertical) {
        const int y = panel.y(tick.value), width = int(tick.text.size()) * characterWidth;
        fill(picture, panel.left, y, panel.width, 1, gridColour);
        drawText(picture, panel.left - width - 4, y - lineHeight / 2 + lineWidth, width, tick.text, greyColour);
    }
}

void drawTimes(Picture& picture, const Panel& panel)
{
    for (const Tick& tick : ticks(0, panel.seconds, 10)) {
        const int width = int(tick.text.size()) * characterWidth;
        const int x = std::min(panel.x(tick.value) - width / 2, picture.width - width);
        drawText(picture, x, panel.top + panel.height + 10, width, tick.text, greyColour);
    }
}

void drawMark(Picture& picture, const Panel& panel, double second, Colour colour)
{
    fill(picture, panel.x(second), panel.top, lineWidth, panel.height, colour);
}

void drawWave(Picture& picture, const Panel& panel, const Channel& channel, Colour colour)
{
    const int64_t length = int64_t(channel.size());
    for (int column = 0; column < panel.width; ++column) {
        // From the last sample of the column before, so that columns join.
        const int64_t first = std::max<int64_t>(0, column * length / panel.width - 1);
        const int64_t end = std::max(first + 1, (column + 1) * length / panel.width);
        const auto [low, high] = std::minmax_element(channel.begin() + first, channel.begin() + end);
        drawRun(picture, panel.left + column, panel.y(*high / fullScale), panel.y(*low / fullScale), 1, colour);
    }
}

void drawCurve(Picture& picture, const Panel& panel, const FloatChannel& values, double step, Colour colour)
{
    int lastX = panel.left, lastY = panel.y(values[0]);
    for (size_t index = 0; index < values.size(); ++index) {
        const int x = panel.x((double(index) + 0.5) * step), y = panel.y(values[index]);
        for (int column = lastX; column < x; ++column) {
            const int from = lastY + (y - lastY) * (column - lastX) / (x - lastX);
            const int to = lastY + (y - lastY) * (column + 1 - lastX) / (x - lastX);
            drawRun(picture, column, from, to, lineWidth, colour);
        }
        drawRun(picture, x, lastY == y || x > lastX ? y : lastY, y, lineWidth, colour);
        lastX = x;
        lastY = y;
    }
    if (values.size() == 1) fill(picture, panel.left, lastY, panel.width, lineWidth, colour);
}
