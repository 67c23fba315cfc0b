#include "platform/linux/sleep/ScreensAsleep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScreensAsleepTest : public testing::Test {
protected:
    std::vector<bool> changes{};
    ScreensAsleep screens{[this](bool areAsleep) { changes.push_back(areAsleep); }};
};

TEST_F(ScreensAsleepTest, SleepWithTheFirstAndWakeWithTheLast)
{
    screens.set(ScreenSource::sessionLock, true);
    screens.set(ScreenSource::serverSaver, true);
    screens.set(ScreenSource::sessionLock, false);
    EXPECT_THAT(changes, ElementsAre(true));
    screens.set(ScreenSource::serverSaver, false);
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(ScreensAsleepTest, TheSameAgainTellsNothing)
{
    screens.set(ScreenSource::desktopSaver, false);
    EXPECT_THAT(changes, IsEmpty());
    screens.set(ScreenSource::desktopSaver, true);
    screens.set(ScreenSource::desktopSaver, true);
    EXPECT_THAT(changes, ElementsAre(true));
    screens.set(ScreenSource::powerManagement, false);
    EXPECT_THAT(changes, ElementsAre(true));
}

} // namespace
} // namespace quillbrook
