#include "platform/linux/session/OutputPower.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(OutputPower, NobodyKnowsWithoutOutputs)
{
    OutputPower power;
    EXPECT_FALSE(power.areAllOff());
    power.set(1, true);
    power.clear();
    EXPECT_FALSE(power.areAllOff());
}

TEST(OutputPower, OneScreenThatIsOnIsEnough)
{
    OutputPower power;
    power.set(1, true);
    EXPECT_TRUE(power.areAllOff());
    power.set(2, false);
    EXPECT_FALSE(power.areAllOff());
    power.set(2, true);
    EXPECT_TRUE(power.areAllOff());
}

TEST(OutputPower, AScreenThatIsPulledOutCountsNoMore)
{
    OutputPower power;
    power.set(1, true);
    power.set(2, false);
    power.remove(2);
    EXPECT_TRUE(power.areAllOff());
    power.remove(1);
    EXPECT_FALSE(power.areAllOff());
}

} // namespace
} // namespace quillbrook
