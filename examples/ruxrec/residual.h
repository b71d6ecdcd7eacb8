// The residual of a macroblock against its prediction.
#pragma once

#include "coding_picture.h"
#include "prediction.h"

// Whether every vector stays within its reference.
bool isInsideReferences(const CodingPicture& picture, const Macroblock& macroblock);

void makeResidual(const CodingPicture& picture, const Macroblock& macroblock, Residual& residual);
