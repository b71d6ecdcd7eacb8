// Decoding of an MPEG-2 block in one pass, from the code lists themselves.
#pragma once

#include "model/huffman.h"

namespace rux::model {

// What a call leaves. `position` and `count` are written unless it says otherwise.
struct DecodedBlock {
    ruxStatus status = ruxStatusOk;
    int16_t coefficients[64] = {};
    int16_t predictor = 0;
    bool writesPosition = true;
    int64_t position = 0;
    bool writesCount = true;
    int32_t count = 0;
    int64_t looked = 0;   // the first bit that no lookup has touched
};

DecodedBlock decodeIntraBlock(Level, const BitSequence&, int64_t position, const CodeList& dc, const CodeList& ac,
                              const int32_t* scan, int16_t quantScale, const int16_t* matrix, int16_t predictor,
                              int32_t dcShift);
DecodedBlock decodeNonIntraBlock(Level, const BitSequence&, int64_t position, const CodeList& first,
                                 const CodeList& ac, const int32_t* scan, int16_t quantScale, const int16_t* matrix);

}
