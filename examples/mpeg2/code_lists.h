// The variable-length codes of ISO/IEC 13818-2, Annex B, written as they are printed there.
#pragma once

#include <cstdint>
#include <vector>

// A code as a string of 0 and 1 (blanks are for the eye) and what it stands for.
struct Code {
    const char* bits;
    int value;
};

// A run of zeros and the level behind it. The sign bit follows the code: 0 for plus, 1 for minus.
struct RunLevelCode {
    const char* bits;
    int run;
    int level;
};

constexpr int macroblockEscape = 34;   // in macroblockAddressIncrement: 33 more

// What a macroblock type says, as a sum of these.
enum : int {
    typeQuant = 1,
    typeForward = 2,
    typeBackward = 4,
    typePattern = 8,
    typeIntra = 16
};

extern const std::vector<Code> macroblockAddressIncrement;   // B-1
extern const std::vector<Code> macroblockTypeI;              // B-2
extern const std::vector<Code> macroblockTypeP;              // B-3
extern const std::vector<Code> macroblockTypeB;              // B-4
extern const std::vector<Code> codedBlockPattern;            // B-9
extern const std::vector<Code> motionCode;                   // B-10
extern const std::vector<Code> dmvector;                     // B-11
extern const std::vector<Code> dctDcSizeLuminance;           // B-12
extern const std::vector<Code> dctDcSizeChrominance;         // B-13

extern const std::vector<RunLevelCode> dctCoefficientsZero;   // B-14, without run 0, level 1
extern const std::vector<RunLevelCode> dctCoefficientsOne;    // B-15, without those that it shares with B-14
extern const std::vector<RunLevelCode> dctCoefficientsShared; // in B-14 and B-15
