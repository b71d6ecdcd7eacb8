// What a family's test stands on; see tests/README.md.
//
//     RUX_FAMILY(Copy, "copy");
//
//     TEST_P(Copy, ruxiCopy_8u_C1R)
//     {
//         sweep(RUX_OPERATION(ruxiCopy_8u_C1R), imageSweep(), [](Case& c, const auto& compare) {
//             const auto src = c.image<uint8_t>();
//             const auto dst = c.image<uint8_t>();
//             compare(src, src.step(), dst, dst.step(), c.roi());
//         });
//     }
#pragma once

#include "support/allocation.h"
#include "support/operation.h"
#include "support/sweep.h"

namespace rux::test {

class FamilyTest : public LevelTest {
public:
    explicit FamilyTest(const char* family) : family(family) {}

    // Calls operation and model with the same arguments: same status, same bytes everywhere.
    template <class Op, class... Arguments>
    ruxStatus agree(const Op& operation, const Arguments&... arguments)
    {
        return Operands<Arguments...>(arguments...).compare(operation, level(), HostState());
    }

    template <class Op, class... Arguments>
    ruxStatus agreeUnder(const HostState& state, const Op& operation, const Arguments&... arguments)
    {
        const Note note([&] { return state.describe(); });
        return Operands<Arguments...>(arguments...).compare(operation, level(), state);
    }

    // Runs body over all cases, until one fails, and checks the golden digest of the golden ones. The body makes the
    // case's images and hands the arguments to `compare`, once or more.
    template <class Op, class Body>
    void sweep(const Op& operation, const SweepOptions& options, const Body& body)
    {
        Digest digest;
        size_t comparisons = 0;
        for (Case& c : casesOf(options)) {
            const Note note([&] { return c.describe(); });
            body(c, [&](const auto&... arguments) {
                Operands<std::decay_t<decltype(arguments)>...> operands(arguments...);
                const ruxStatus status = operands.compare(operation, level(), HostState());
                comparisons++;
                if (!c.isGolden()) return;
                digest.add(status);
                operands.digest(digest);
            });
            if (HasFailure()) return;
        }
        EXPECT_GT(comparisons, 0u) << "the sweep compared nothing";
        expectGolden(family, std::string(operation.name) + options.label, level(), digest);
    }

    // All combinations of wrong arguments: the model's status, and where that is an error, nothing written. Pointers
    // (images), strides (image.step()) and sizes have their wrong values; give others with wrongly(right, {wrong...}).
    // A wrong value that the operation accepts must suit the memory: give a plain int32_t where it would not.
    template <class Op, class... Arguments>
    void refuse(const Op& operation, const Arguments&... arguments)
    {
        const std::vector<int> choices = Operands<Arguments...>(arguments...).choices();
        int refused = 0;
        for (const auto& choice : combinations(choices)) {
            Operands<Arguments...> operands(arguments...);
            operands.choose(choice);
            const uint64_t before = operands.fingerprint();
            const ruxStatus status = operands.compare(operation, level(), HostState());
            if (status < 0) {
                refused++;
                EXPECT_EQ(operands.fingerprint(), before) << "a refused call of " << operation.name << " wrote";
            }
            if (HasFailure()) return;
        }
        EXPECT_GT(refused, 0) << "no combination was refused";
    }

private:
    const char* family;
};

}

#define RUX_FAMILY(Fixture, file)                          \
    class Fixture : public rux::test::FamilyTest {         \
    protected:                                             \
        Fixture() : rux::test::FamilyTest(file) {}         \
    };                                                     \
    RUX_AT_EACH_LEVEL(Fixture)
