#include "platform/linux/session/IdleTime.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

class IdleTimeTest : public testing::Test {
protected:
    static constexpr IdleTime::Seat kSeat = 7;

    double time = 1000;
    IdleTime idle{[this] { return time; }};
};

TEST_F(IdleTimeTest, GrowsFromTheBeginningWhileNobodyTells)
{
    EXPECT_FALSE(idle.isKnown());
    time += 4000;
    EXPECT_EQ(idle.secondsSinceLastInput(), 4000);
}

TEST_F(IdleTimeTest, IsZeroWhileASeatIsInUse)
{
    idle.asked(kSeat);
    EXPECT_TRUE(idle.isKnown());
    idle.resumed(kSeat);
    time += 600;
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
}

TEST_F(IdleTimeTest, CountsTheNoticesOwnDelay)
{
    idle.asked(kSeat);
    idle.resumed(kSeat);
    time += 100;
    idle.idled(kSeat);
    EXPECT_EQ(idle.secondsSinceLastInput(), 5);
    time += 295.5;
    EXPECT_EQ(idle.secondsSinceLastInput(), 300.5);
    idle.resumed(kSeat);
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
}

TEST_F(IdleTimeTest, AskingIsNoProofOfPresence)
{
    time += 900;
    idle.asked(kSeat);
    EXPECT_EQ(idle.secondsSinceLastInput(), 900);
    time += 5;
    idle.idled(kSeat); // nobody has touched it since we asked
    EXPECT_EQ(idle.secondsSinceLastInput(), 905);
}

TEST_F(IdleTimeTest, ASeatOfWhichNoRestIsToldInTimeIsInUse)
{
    idle.asked(kSeat);
    time += 5.9;
    EXPECT_NEAR(idle.secondsSinceLastInput(), 5.9, 1e-9);
    time += 0.1;
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
    time += 10;
    idle.idled(kSeat);
    EXPECT_EQ(idle.secondsSinceLastInput(), 5);
}

TEST_F(IdleTimeTest, TheSeatThatWasUsedLastCounts)
{
    for (const IdleTime::Seat seat : {1U, 2U}) {
        idle.asked(seat);
        idle.resumed(seat);
    }
    time += 60;
    idle.idled(1);
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
    time += 60;
    idle.idled(2);
    EXPECT_EQ(idle.secondsSinceLastInput(), 5);
    time += 60;
    idle.resumed(1);
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
}

TEST_F(IdleTimeTest, TimePassesOnWhenADesktopDiesUnderAPersonAtWork)
{
    idle.asked(kSeat);
    idle.resumed(kSeat);
    time += 60;
    idle.gone(kSeat);
    EXPECT_FALSE(idle.isKnown());
    time += 400;
    EXPECT_EQ(idle.secondsSinceLastInput(), 400);
}

TEST_F(IdleTimeTest, ADeadDesktopsRestIsNotForgotten)
{
    idle.asked(kSeat);
    idle.resumed(kSeat);
    time += 60;
    idle.idled(kSeat);
    time += 100;
    idle.gone(kSeat);
    idle.asked(kSeat);
    EXPECT_EQ(idle.secondsSinceLastInput(), 105);
}

TEST_F(IdleTimeTest, ARestThatWasAskedForBeganWhenItBegan)
{
    idle.asked(1);
    time += 1000;
    ASSERT_EQ(idle.secondsSinceLastInput(), 0);
    idle.rested(1, 300);
    EXPECT_EQ(idle.secondsSinceLastInput(), 300);
    time += 1;
    EXPECT_EQ(idle.secondsSinceLastInput(), 301);
    idle.resumed(1);
    EXPECT_EQ(idle.secondsSinceLastInput(), 0);
    idle.rested(2, 500);
    EXPECT_EQ(idle.secondsSinceLastInput(), 0) << "nobody tells of that seat";
}

TEST_F(IdleTimeTest, StrangersSayNothing)
{
    idle.resumed(kSeat);
    idle.idled(kSeat);
    idle.gone(kSeat);
    time += 10;
    EXPECT_FALSE(idle.isKnown());
    EXPECT_EQ(idle.secondsSinceLastInput(), 10);
}

} // namespace
} // namespace quillbrook
