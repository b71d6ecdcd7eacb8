// Identification of the processor: what it is asked, in which order, and what follows from its answers.
#include <gtest/gtest.h>

#include <cstring>

#include "support/processors.h"

namespace rux::test {
namespace {

using Leaves = std::vector<uint32_t>;
using Trials = std::vector<uint32_t>;

ProcessorInfo identify(FakeProcessor& processor)
{
    ProcessorInfo info;
    std::memset(&info, 0xA5, sizeof info);
    EXPECT_EQ(getProcessorInfo(processorOf(processor), &info), info.featureMask);
    return info;
}

ProcessorInfo identifySignature(uint32_t signature)
{
    FakeProcessor processor;
    processor.signature = signature;
    return identify(processor);
}

TEST(ProcessorInfo, hasTheContractsLayout)
{
    EXPECT_EQ(offsetof(ProcessorInfo, vendor), 0u);
    EXPECT_EQ(offsetof(ProcessorInfo, name), 13u);
    EXPECT_EQ(offsetof(ProcessorInfo, family), 44u);
    EXPECT_EQ(offsetof(ProcessorInfo, model), 48u);
    EXPECT_EQ(offsetof(ProcessorInfo, stepping), 52u);
    EXPECT_EQ(offsetof(ProcessorInfo, featureMask), 56u);
    EXPECT_EQ(offsetof(ProcessorInfo, confirmedMask), 60u);
    EXPECT_EQ(offsetof(ProcessorInfo, knownFeatures), 64u);
    EXPECT_EQ(sizeof(ProcessorInfo), 68u);
}

TEST(Identification, withoutCpuidLeavesTheRecordUntouched)
{
    FakeProcessor processor = processorOfLevel(3);
    processor.hasCpuid = false;
    ProcessorInfo info, untouched;
    std::memset(&info, 0xA5, sizeof info);
    std::memset(&untouched, 0xA5, sizeof untouched);
    EXPECT_EQ(getProcessorInfo(processorOf(processor), &info), 0u);
    EXPECT_EQ(std::memcmp(&info, &untouched, sizeof info), 0);
    EXPECT_EQ(getProcessorInfo(processorOf(processor), nullptr), 0u);
    EXPECT_EQ(processor.leavesRead, Leaves{});
    EXPECT_EQ(processor.trialsRun, Trials{});
}

TEST(Identification, readsTheLeavesInOrder)
{
    FakeProcessor processor;
    identify(processor);
    EXPECT_EQ(processor.leavesRead, (Leaves{0, 1, 0x80000000}));
}

TEST(Identification, readsTheExtendedWordFromHighestLeaf0x80000000)
{
    for (const uint32_t highest : {0x80000000u, 0x80000001u, 0x80000008u, 0xFFFFFFFFu}) {
        FakeProcessor processor;
        processor.highestExtended = highest;
        processor.extendedFeatures = reportsExtended;
        EXPECT_EQ(identify(processor).featureMask, 8u) << std::hex << highest;
        EXPECT_EQ(processor.leavesRead, (Leaves{0, 1, 0x80000000, 0x80000001})) << std::hex << highest;
    }
    for (const uint32_t highest : {0u, 2u, 0x7FFFFFFFu}) {
        FakeProcessor processor;
        processor.highestExtended = highest;
        processor.extendedFeatures = reportsExtended;
        EXPECT_EQ(identify(processor).featureMask, 0u) << std::hex << highest;
        EXPECT_EQ(processor.leavesRead, (Leaves{0, 1, 0x80000000})) << std::hex << highest;
    }
}

TEST(Identification, triesWhatIsReportedInAFixedOrder)
{
    FakeProcessor processor;
    processor.features = ~0u;
    processor.highestExtended = 0x80000001;
    processor.extendedFeatures = ~0u;
    const ProcessorInfo info = identify(processor);
    EXPECT_EQ(processor.trialsRun, (Trials{1, 8, 2, 4}));
    EXPECT_EQ(info.featureMask, 15u);
    EXPECT_EQ(info.confirmedMask, 15u);
    EXPECT_EQ(info.knownFeatures, 15);
}

TEST(Identification, takesEachFeatureFromItsOwnBit)
{
    for (int bit = 0; bit < 32; ++bit) {
        FakeProcessor processor;
        processor.features = 1u << bit;
        const uint32_t expected = bit == 23 ? 1 : bit == 25 ? 2 : bit == 26 ? 4 : 0;
        EXPECT_EQ(identify(processor).featureMask, expected) << bit;
        EXPECT_EQ(processor.trialsRun, expected ? Trials{expected} : Trials{}) << bit;

        FakeProcessor extended;
        extended.highestExtended = 0x80000001;
        extended.extendedFeatures = 1u << bit;
        EXPECT_EQ(identify(extended).featureMask, bit == 31 ? 8u : 0u) << bit;
    }
}

TEST(Identification, keepsAReportedFeatureWhoseTrialFaults)
{
    FakeProcessor processor = processorOfLevel(2);
    processor.faultingTrials = featureSse;
    const ProcessorInfo info = identify(processor);
    EXPECT_EQ(info.featureMask, 3u);
    EXPECT_EQ(info.confirmedMask, 1u);
    EXPECT_EQ(levelOf(info.featureMask), 2);
    EXPECT_EQ(info.knownFeatures, 15);
}

TEST(Identification, withoutARecordRunsAllTheSame)
{
    FakeProcessor processor = processorOfLevel(3);
    processor.highestExtended = 0x80000000;
    processor.extendedFeatures = reportsExtended;
    EXPECT_EQ(getProcessorInfo(processorOf(processor), nullptr), 15u);
    EXPECT_EQ(processor.leavesRead, (Leaves{0, 1, 0x80000000, 0x80000001}));
    EXPECT_EQ(processor.trialsRun, (Trials{1, 8, 2, 4}));
}

TEST(Identification, readsFamilyModelAndStepping)
{
    const ProcessorInfo plain = identifySignature(0x00000653);
    EXPECT_EQ(plain.family, 6);
    EXPECT_EQ(plain.model, 5);
    EXPECT_EQ(plain.stepping, 3);
    EXPECT_EQ(identifySignature(0x0FF00E00).family, 14);   // the extended family counts with 15 alone
    EXPECT_EQ(identifySignature(0x00000F00).family, 15);
    EXPECT_EQ(identifySignature(0x00100F00).family, 31);
    EXPECT_EQ(identifySignature(0x01200F00).family, 303);
    EXPECT_EQ(identifySignature(0xFFFFFFFF).family, 0xFFF);
    EXPECT_EQ(identifySignature(0x000F06F0).model, 15);
    EXPECT_EQ(identifySignature(0x000A0FF0).model, 15);
    EXPECT_EQ(identifySignature(0x000F0600).model, 0);
    EXPECT_EQ(identifySignature(0x0000000F).stepping, 15);
}

TEST(Identification, keepsTheVendorAndClearsTheRest)
{
    FakeProcessor processor;
    processor.vendor = "ABCDEFGHIJKL";
    const ProcessorInfo info = identify(processor);
    EXPECT_STREQ(info.vendor, "ABCDEFGHIJKL");
    EXPECT_STREQ(info.name, "Unknown");
    for (size_t index = sizeof "Unknown"; index < sizeof info.name; ++index) EXPECT_EQ(info.name[index], 0) << index;
}

TEST(Level, isAThreeWayChoice)
{
    for (uint32_t mask = 0; mask < 16; ++mask) {
        const int32_t expected = mask & 4 ? 3 : mask & 2 ? 2 : mask & 1 ? 1 : 0;
        EXPECT_EQ(levelOf(mask), expected) << mask;
        EXPECT_EQ(levelOf(mask | 0xFFFFFF00), expected) << mask;
    }
    EXPECT_EQ(levelOf(8), 0);   // the extended flag alone
    EXPECT_EQ(levelOf(4), 3);   // each feature decides by itself
}

std::string nameOf(int32_t family, int32_t model, const char* vendor)
{
    char name[sizeof ProcessorInfo::name + 1];
    std::memset(name, 0x5A, sizeof name);
    ruxComposeProcessorName(family, model, vendor, name);
    EXPECT_EQ(name[sizeof name - 1], 0x5A) << "wrote past the field";
    EXPECT_NE(std::memchr(name, 0, sizeof name - 1), nullptr);
    return name;
}

TEST(ProcessorName, followsVendorFamilyAndModel)
{
    EXPECT_EQ(nameOf(6, 9, "CentaurHauls"), "VIA C3");
    EXPECT_EQ(nameOf(6, 10, "CentaurHauls"), "VIA C7");
    EXPECT_EQ(nameOf(15, 2, "GenuineTMx86"), "Transmeta Efficeon");
    EXPECT_EQ(nameOf(15, 2, "GenuineTMx86 and more"), "Transmeta Efficeon");   // 12 characters count
    EXPECT_EQ(nameOf(15, 2, "GenuineTMx8"), "Unknown");
    EXPECT_EQ(nameOf(4, 2, "GenuineTMx86"), "Unknown");
    EXPECT_EQ(nameOf(6, 16, "CentaurHauls"), "Unknown");
    EXPECT_EQ(nameOf(0, 0, ""), "Unknown");
}

TEST(ThisProcessor, isIdentified)
{
    EXPECT_EQ(ruxHasCpuid(), 1);
    ProcessorInfo info;
    std::memset(&info, 0xA5, sizeof info);
    const uint32_t features = ruxGetProcessorInfo(&info);
    EXPECT_EQ(info.featureMask, features);
    EXPECT_EQ(info.confirmedMask & ~features, 0u);
    EXPECT_EQ(ruxGetProcessorInfo(nullptr), features);
    EXPECT_EQ(std::strlen(info.vendor), 12u);
    __builtin_cpu_init();
    EXPECT_EQ((features & featureMmx) != 0, __builtin_cpu_supports("mmx") != 0);
    EXPECT_EQ((features & featureSse) != 0, __builtin_cpu_supports("sse") != 0);
    EXPECT_EQ((features & featureSse2) != 0, __builtin_cpu_supports("sse2") != 0);
}

}
}
