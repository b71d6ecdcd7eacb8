// Motion vectors in the stream: their prediction and their codes (ISO/IEC 13818-2, 7.6.3), in frame pictures.
#pragma once

#include "bit_writer.h"
#include "encode_tables.h"
#include "macroblock.h"

// The f_code whose range holds components from -reach to reach, in half samples.
int fCodeFor(int reach);

// Bits of a vector behind a predicted one, by f_code.
int vectorLength(const EncodeTables& tables, const int (&fCode)[2], MotionVector vector, MotionVector predicted);
void writeVector(BitWriter& bits, const EncodeTables& tables, const int (&fCode)[2], MotionVector vector,
                 MotionVector predicted);
