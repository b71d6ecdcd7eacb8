// The trials of the processor's features, and what they leave behind.
#include <gtest/gtest.h>

#include "frame/processor.h"
#include "frame/trial.h"

namespace rux::test {
namespace {

struct X87Environment {
    uint32_t controlWord, statusWord, tagWord, rest[4];
};

X87Environment x87Environment()
{
    X87Environment environment;
    asm volatile("fnstenv %0\n\tfldenv %0" : "=m"(environment));
    return environment;
}

TEST(Trial, runsWhatTheProcessorHas)
{
    ProcessorInfo info;
    ruxGetProcessorInfo(&info);
    for (const uint32_t feature : {1u, 2u, 4u}) {
        if (!(info.featureMask & feature)) continue;
        EXPECT_EQ(ruxProbeFeature(feature), 1) << feature;
        EXPECT_EQ(info.confirmedMask & feature, feature);
    }
    EXPECT_EQ(ruxHasCpuid(), 1);
}

TEST(Trial, tellsWhatTheProcessorDoesNotHave)
{
    if (ruxGetProcessorInfo(nullptr) & featureExtended) GTEST_SKIP() << "this processor has all features";
    for (int turn = 0; turn < 100; ++turn) ASSERT_EQ(ruxProbeFeature(featureExtended), 0);
}

TEST(Trial, ofNoFeatureSucceeds)
{
    for (const uint32_t value : {0u, 3u, 5u, 15u, 16u, 0x80000000u, ~0u}) EXPECT_EQ(ruxProbeFeature(value), 1) << value;
}

TEST(Trial, leavesTheFloatingPointStateAsItWas)
{
    for (const uint32_t feature : {1u, 2u, 4u, 8u}) {
        const X87Environment before = x87Environment();
        ruxProbeFeature(feature);
        const X87Environment after = x87Environment();
        EXPECT_EQ(after.controlWord & 0xFFFF, before.controlWord & 0xFFFF) << feature;
        EXPECT_EQ(after.tagWord & 0xFFFF, 0xFFFFu) << feature;
    }
}

}
}
