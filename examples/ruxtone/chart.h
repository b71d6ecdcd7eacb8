// Panels with axes, and curves on them. Values are in the panel's own units; a panel lies wholly inside its picture.
#pragma once

#include <string>
#include <vector>

#include "picture.h"
#include "sound.h"
#include "text.h"

struct Panel {
    int left, top, width, height;   // pixels
    double seconds;                 // across
    double least, most;             // at the lower and the upper edge

    int x(double second) const;     // both held inside the panel
    int y(double value) const;
};

struct Tick {
    double value;
    std::string text;
};

constexpr Colour groundColour = {24, 24, 28}, panelColour = {38, 38, 44}, gridColour = {66, 66, 74};
constexpr Colour inkColour = {235, 235, 235}, greyColour = {165, 165, 170};

void fill(Picture& picture, int left, int top, int width, int height, Colour colour);
Colour dimmed(Colour colour);

// About count round values from least to most.
std::vector<Tick> ticks(double least, double most, int count);

// Background and grid; the texts of the ticks stand to the left.
void drawPanel(Picture& picture, const Panel& panel, const std::vector<Tick>& vertical);
// The times below the panel.
void drawTimes(Picture& picture, const Panel& panel);

void drawMark(Picture& picture, const Panel& panel, double second, Colour colour);      // from edge to edge
void drawWave(Picture& picture, const Panel& panel, const Channel& channel, Colour colour);
// One value for each step of so many seconds, drawn in the middle of its step.
void drawCurve(Picture& picture, const Panel& panel, const FloatChannel& values, double step, Colour colour);
