// Writes the headers above the macroblocks (ISO/IEC 13818-2, 6.2.2 and 6.2.3), each from its start code on.
#pragma once

#include "bit_writer.h"
#include "syntax.h"

constexpr int widest = 1920, highest = 1152;   // of the Main Profile

// bitRate in bits a second; 0: what the level of the profile allows.
void writeSequenceHeader(BitWriter& bits, const Sequence& sequence, int64_t bitRate);
void writeGroupHeader(BitWriter& bits, const Sequence& sequence, size_t firstPicture, bool closed);
void writePictureHeader(BitWriter& bits, const PictureHeader& picture, int temporalReference);
void writeSliceHeader(BitWriter& bits, int row, int quantiserCode);
