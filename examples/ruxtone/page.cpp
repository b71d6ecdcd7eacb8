#include "page.h"

#include <algorithm>
#include <cmath>

#include "chart.h"

namespace {

constexpr int pageWidth = 1400, leftMargin = 110, rightMargin = 30, gap = 12, stripGap = 20;
constexpr int captionHeight = lineHeight + 4, waveHeight = 110, curveHeight = 170;
constexpr int panelWidth = pageWidth - leftMargin - rightMargin;
constexpr Colour channelColours[] = {{110, 185, 255}, {255, 170, 80}};
constexpr Colour clickColour = {190, 40, 50}, meanColour = {255, 255, 255};
constexpr float quietest = 1e-3f;   // -60 dB

// Draws panel below panel.
class Page {
public:
    explicit Page(int height, double seconds) : picture_(pageWidth, height), seconds_(seconds)
    {
        fill(picture_, 0, 0, pageWidth, height, groundColour);
    }

    void text(int x, const std::string& words, Colour colour)
    {
        drawText(picture_, x, y_, pageWidth - x - rightMargin, words, colour);
    }

    void caption(const std::string& words)
    {
        y_ += gap;
        text(leftMargin, words, inkColour);
        y_ += captionHeight;
    }

    Panel panel(int height, double least, double most, const std::vector<Tick>& vertical)
    {
        const Panel panel = {leftMargin, y_, panelWidth, height, seconds_, least, most};
        drawPanel(picture_, panel, vertical);
        y_ += height;
        return panel;
    }

    Picture& picture() { return picture_; }
    void down(int pixels) { y_ += pixels; }

private:
    Picture picture_;
    const double seconds_;
    int y_ = gap;
};

std::string nameOf(size_t channel, size_t channels)
{
    return channels == 1 ? "" : channel == 0 ? "left" : "right";
}

void drawWaves(Page& page, const Stage& stage, const std::vector<std::vector<int32_t>>* clicks)
{
    const size_t channels = stage.sound.channels.size();
    for (size_t channel = 0; channel < channels; ++channel) {
        const Panel panel = page.panel(waveHeight, -1, 1, {{-1, "-1"}, {0, "0"}, {1, "1"}});
        if (clicks)
            for (const int32_t place : (*clicks)[channel])
                drawMark(page.picture(), panel, double(place) / stage.sound.rate, clickColour);
        drawWave(page.picture(), panel, stage.sound.channels[channel], channelColours[channel]);
        const Measures& measures = stage.measures[channel];
        drawCurve(page.picture(), panel, measures.mean, measures.windowSeconds, meanColour);
        drawText(page.picture(), 8, panel.top + gap, leftMargin - 40, nameOf(channel, channels),
                 channelColours[channel]);
        page.down(stripGap);
    }
}

// The channels of a stage on one panel.
void drawCurves(Page& page, const Panel& panel, const Stage& stage, FloatChannel Measures::*values, bool dim)
{
    for (size_t channel = 0; channel < stage.measures.size(); ++channel) {
        const Measures& measures = stage.measures[channel];
        const Colour colour = channelColours[channel];
        drawCurve(page.picture(), panel, measures.*values, measures.windowSeconds, dim ? dimmed(colour) : colour);
    }
}

Stage inDecibels(Stage stage)
{
    for (Measures& measures : stage.measures)
        for (float& level : measures.level) level = 20 * std::log10(std::max(level, quietest));
    return stage;
}

float highest(const Stage& stage, FloatChannel Measures::*values)
{
    float most = 0;
    for (const Measures& measures : stage.measures)
        for (const float value : measures.*values) most = std::max(most, value);
    return most;
}

void drawBoth(Page& page, const Panel& panel, const Stage& before, const Stage& after, FloatChannel Measures::*values)
{
    drawCurves(page, panel, before, values, true);
    drawCurves(page, panel, after, values, false);
}

}

Picture drawPage(const Stage& before, const Stage& after, const std::vector<std::vector<int32_t>>& clicks,
                 const PageTexts& texts)
{
    const int channels = int(before.sound.channels.size());
    const int height = gap + captionHeight + 4 * (gap + captionHeight) + 2 * channels * (waveHeight + stripGap) +
                       2 * curveHeight + 2 * captionHeight + 2 * gap;
    Page page(height, before.sound.seconds());
    page.text(gap, texts.title, inkColour);
    page.down(captionHeight);

    page.caption("before: " + texts.clicks);
    drawWaves(page, before, &clicks);
    page.caption("after: " + texts.curve);
    drawWaves(page, after, nullptr);

    const std::string colours = "; bright after, dim before";
    page.caption("level (mean magnitude), decibels below full scale" + colours);
    const Panel level = page.panel(curveHeight, -60, 0, ticks(-60, 0, 4));
    drawBoth(page, level, inDecibels(before), inDecibels(after), &Measures::level);

    page.caption("zero crossings a second" + colours);
    const double most = std::max(10.0f, 1.05f * std::max(highest(before, &Measures::crossings),
                                                         highest(after, &Measures::crossings)));
    const Panel crossings = page.panel(curveHeight, 0, most, ticks(0, most, 4));
    drawBoth(page, crossings, before, after, &Measures::crossings);
    drawTimes(page.picture(), crossings);
    page.down(gap + captionHeight);
    page.text(pageWidth / 2, "time, seconds", greyColour);
    return page.picture();
}
