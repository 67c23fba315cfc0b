#include "platform/linux/session/Toplevels.h"

#include "base/Text.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

class ToplevelsTest : public testing::Test {
protected:
    /// Opens a window with the keys.
    void open(Toplevels::Window window, std::string_view appId)
    {
        toplevels.setAppId(window, appId);
        toplevels.setActivated(window, true);
        toplevels.commit(window);
    }

    void activate(Toplevels::Window window, bool isActivated)
    {
        toplevels.setActivated(window, isActivated);
        toplevels.commit(window);
    }

    std::string active() const
    {
        const std::string* appId = toplevels.activeAppId();
        return appId != nullptr ? *appId : "none";
    }

    Toplevels toplevels{};
};

TEST_F(ToplevelsTest, NothingIsInFrontAtFirst)
{
    EXPECT_EQ(active(), "none");
    toplevels.setAppId(1, "foot");
    EXPECT_TRUE(toplevels.commit(1));
    EXPECT_EQ(active(), "none");
}

TEST_F(ToplevelsTest, ChangesHoldOnceTheyAreComplete)
{
    toplevels.setAppId(1, "foot");
    toplevels.setActivated(1, true);
    EXPECT_EQ(active(), "none");
    EXPECT_TRUE(toplevels.commit(1));
    EXPECT_EQ(active(), "foot");
    toplevels.setAppId(1, "footclient");
    EXPECT_EQ(active(), "foot");
    EXPECT_TRUE(toplevels.commit(1));
    EXPECT_EQ(active(), "footclient");
}

TEST_F(ToplevelsTest, WhatDoesNotMatterIsNoChange)
{
    open(1, "foot");
    EXPECT_FALSE(toplevels.commit(1)); // a title, a state that says the same
}

TEST_F(ToplevelsTest, FollowsTheKeysWhoeverIsToldFirst)
{
    open(1, "foot");
    open(2, "gedit");
    EXPECT_EQ(active(), "gedit"); // told before the other one lost them
    activate(1, false);
    EXPECT_EQ(active(), "gedit");
    activate(2, false);
    EXPECT_EQ(active(), "none");
    activate(1, true);
    EXPECT_EQ(active(), "foot");
}

TEST_F(ToplevelsTest, AWindowClosedWithTheKeysIsNoLongerInFront)
{
    open(1, "foot");
    EXPECT_TRUE(toplevels.close(1));
    EXPECT_EQ(active(), "none");
    EXPECT_FALSE(toplevels.close(1));
}

TEST_F(ToplevelsTest, ANumberIsUsedAgainForAnotherWindow)
{
    open(1, "foot");
    toplevels.close(1);
    toplevels.setAppId(1, "gedit");
    toplevels.commit(1);
    EXPECT_EQ(active(), "none");
}

TEST_F(ToplevelsTest, ADeadDesktopHasNoWindows)
{
    open(1, "foot");
    toplevels.clear();
    EXPECT_EQ(active(), "none");
}

TEST_F(ToplevelsTest, AnIdOfManyCharactersIsCut)
{
    open(1, std::string(10'000, 'x'));
    EXPECT_EQ(active(), std::string(4096, 'x'));
}

TEST_F(ToplevelsTest, AnIdOfAnyBytesBecomesText)
{
    open(1, "foo\xFF\xFE");
    EXPECT_TRUE(isValidUtf8(active()));
    EXPECT_TRUE(active().starts_with("foo"));
}

TEST_F(ToplevelsTest, AThousandSwitchesLeaveTheLastInFront)
{
    for (Toplevels::Window window = 1; window <= 1000; ++window) {
        open(window, "app" + std::to_string(window));
        activate(window - 1, false);
    }
    EXPECT_EQ(active(), "app1000");
    for (Toplevels::Window window = 1; window < 1000; ++window) {
        toplevels.close(window);
    }
    EXPECT_EQ(active(), "app1000");
}

} // namespace
} // namespace quillbrook
