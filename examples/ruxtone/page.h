// The picture: waveforms before and after, level, zero crossings, one below the other over the same time.
#pragma once

#include "measures.h"
#include "picture.h"
#include "sound.h"

struct Stage {
    Sound sound;
    std::vector<Measures> measures;   // of each channel
};

struct PageTexts {
    std::string title, clicks, curve;   // what the sound is, what was taken out, what was done
};

Picture drawPage(const Stage& before, const Stage& after, const std::vector<std::vector<int32_t>>& clicks,
                 const PageTexts& texts);
