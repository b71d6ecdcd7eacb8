// Reads the headers above the slices (ISO/IEC 13818-2, 6.2.2 and 6.2.3).
#pragma once

#include "bitstream.h"
#include "syntax.h"

// Each reads one header, whose start code (for extensions: and identifier) has been read. Refusal: a kind of stream
// that this program does not decode. Damage: a value that cannot be.
void readSequenceHeader(BitReader& bits, Sequence& sequence, Matrices& matrices);
void readSequenceExtension(BitReader& bits, Sequence& sequence);
void readMatrixExtension(BitReader& bits, Matrices& matrices);
GroupHeader readGroupHeader(BitReader& bits);
PictureHeader readPictureHeader(BitReader& bits);
void readPictureCodingExtension(BitReader& bits, PictureHeader& picture);
