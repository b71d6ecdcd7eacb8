// What happens to the sound: clicks go, and a power curve lifts what is quiet.
#pragma once

#include "sound.h"

// Where a sample differs from the median of the mask's samples around it by more than the limit, it becomes that
// median: music stays as it is, clicks of fewer than half the mask's samples go. Returns the places.
std::vector<int32_t> removeClicks(Channel& channel, int32_t mask, float limit);

FloatChannel toFloats(const Channel& channel);
Channel toSamples(FloatChannel values);           // rounded and saturated

// sign(x) |x| ** exponent
void applyPower(FloatChannel& values, float exponent);

FloatChannel magnitudes(const FloatChannel& values);
