// Fixed tables of ISO/IEC 13818-2: scans, default matrix, quantiser scales.
#pragma once

#include <array>
#include <cstdint>

using Scan = std::array<int32_t, 64>;     // the raster index of each scan position
using Matrix = std::array<int16_t, 64>;   // weights in raster order

extern const Scan zigzagScan;
extern const Scan alternateScan;
extern const Matrix defaultIntraMatrix;

// quantiser_scale of a quantiser_scale_code, by q_scale_type.
extern const int16_t quantiserScales[2][32];
