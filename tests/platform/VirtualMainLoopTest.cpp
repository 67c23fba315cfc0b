#include "platform/virtual/VirtualMainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VirtualMainLoopTest : public testing::Test {
protected:
    /// A block that notes its name and the time.
    MainLoop::Block note(const std::string& name)
    {
        return [this, name] {
            notes.push_back(name + "@" + std::to_string(static_cast<int>(clock.now())));
        };
    }

    VirtualClock clock{1000};
    VirtualMainLoop loop{clock};
    std::vector<std::string> notes{};
};

TEST_F(VirtualMainLoopTest, ATimerRunsAtEachRoundAndNotAtOnce)
{
    loop.repeatEvery(60, note("a"));
    loop.runThrough(1180);
    EXPECT_THAT(notes, ElementsAre("a@1060", "a@1120", "a@1180"));
}

TEST_F(VirtualMainLoopTest, RoundsAreNotSummedUp)
{
    double last = 0;
    loop.repeatEvery(0.1, [&] { last = clock.now(); });
    loop.runThrough(2000.05);
    EXPECT_EQ(last, 1000 + 10000 * 0.1);
}

TEST_F(VirtualMainLoopTest, WhatIsDueTogetherRunsInTheOrderOfMaking)
{
    loop.repeatEvery(60, note("a"));
    loop.runAfter(60, note("b"));
    loop.repeatEvery(1, [&, count = 0]() mutable {
        if (++count == 60) {
            note("c")();
        }
    });
    loop.runThrough(1060);
    EXPECT_THAT(notes, ElementsAre("a@1060", "b@1060", "c@1060"));
}

TEST_F(VirtualMainLoopTest, RunBeforeLeavesWhatIsDueAtItsEnd)
{
    loop.runAfter(5, note("a"));
    loop.runBefore(1005);
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(clock.now(), 1005);
    loop.runBefore(1006);
    EXPECT_THAT(notes, ElementsAre("a@1005"));
}

TEST_F(VirtualMainLoopTest, PostedBlocksRunWhenTheLoopRunsAndInOrder)
{
    loop.post([&] {
        note("a")();
        loop.post(note("c"));
    });
    loop.post(note("b"));
    EXPECT_THAT(notes, IsEmpty());
    loop.runThrough(1000);
    EXPECT_THAT(notes, ElementsAre("a@1000", "b@1000", "c@1000"));
}

TEST_F(VirtualMainLoopTest, AfterAJumpEachOverdueTimerRunsOnceInTheOrderOfBeingDue)
{
    loop.repeatEvery(60, note("minute"));
    loop.repeatEvery(50, note("often"));
    loop.runAfter(55, note("once"));
    loop.runBefore(1010);
    loop.jumpTo(1200); // "often" is due at exactly that time too
    loop.runBefore(1200); // nothing runs while the clock stands
    EXPECT_THAT(notes, IsEmpty());
    loop.runBefore(1240);
    EXPECT_THAT(notes, ElementsAre("often@1200", "once@1200", "minute@1200"));
    loop.runThrough(1250);
    EXPECT_THAT(
        notes, ElementsAre("often@1200", "once@1200", "minute@1200", "minute@1240", "often@1250"));
}

TEST_F(VirtualMainLoopTest, ABlockMayClearTheLoop)
{
    loop.repeatEvery(1, [&] {
        note("a")();
        loop.clear();
    });
    loop.runThrough(1010);
    EXPECT_THAT(notes, ElementsAre("a@1001"));
}

} // namespace
} // namespace quillbrook
