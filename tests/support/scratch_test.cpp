// Work memory of the caller's: what is written in it is free, what is written around it is found.
#include <gtest/gtest-spi.h>

#include "ruxlib/status.h"
#include "support/family.h"
#include "support/scratch.h"

namespace rux::test {
namespace {

constexpr int bytes = 100;

ruxStatus model(Level, uint8_t* buffer)
{
    return buffer ? ruxStatusOk : ruxStatusNullPointer;
}

template <int place>
ruxStatus RUXCALL writes(uint8_t* buffer)
{
    if (!buffer) return ruxStatusNullPointer;
    buffer[place] ^= 1;
    return ruxStatusOk;
}

template <int place>
void compareAt(Place where)
{
    const Scratch scratch(bytes, where, 1);
    Operands<Scratch> operands(scratch);
    operands.compare(operationOf("writes", &writes<place>, &model), px, HostState());
}

constexpr Place inTheMiddle = {Edge::start, 32};

TEST(Scratch, contentsAreFree)
{
    compareAt<0>(inTheMiddle);
    compareAt<bytes - 1>(inTheMiddle);
    compareAt<bytes - 1>({Edge::end, Place::touching});
}

TEST(Scratch, findsWhatIsWrittenAround)
{
    EXPECT_NONFATAL_FAILURE(compareAt<-1>(inTheMiddle), "before the work memory");
    EXPECT_NONFATAL_FAILURE(compareAt<bytes>(inTheMiddle), "behind the work memory");
}

TEST(Scratch, itsEndFaults)
{
    const Scratch scratch(bytes, {Edge::end, Place::touching}, 1);
    EXPECT_DEATH(writes<bytes>(scratch.data()), "");
}

}
}
