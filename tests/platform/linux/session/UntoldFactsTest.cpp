#include "platform/linux/session/UntoldFacts.h"

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/session/IdleTime.h"
#include "platform/linux/session/SessionFront.h"
#include "platform/linux/sleep/ScreensAsleep.h"
#include "platform/virtual/VirtualClock.h"
#include "platform/virtual/VirtualMainLoop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {
namespace {

constexpr std::string_view kNoFront = "没有告诉前台应用";
constexpr std::string_view kNoIdleTime = "没有告诉闲置时间";

struct Shell final : FrontSource {
    bool isThere() const override { return there; }
    std::optional<FrontWindow> front() const override { return std::nullopt; }

    bool there = true;
};

class UntoldFactsTest : public testing::Test {
protected:
    UntoldFactsTest()
    {
        front.add(shell);
        idle.asked(1);
    }

    void setShell(bool isThere)
    {
        shell.there = isThere;
        untold.frontSourceChanged();
    }

    /// How often the line was said in so many seconds.
    int said(std::string_view line, double seconds)
    {
        testing::internal::CaptureStderr();
        loop.runThrough(clock.now() + seconds);
        const std::string output = testing::internal::GetCapturedStderr();
        int times = 0;
        for (auto at = output.find(line); at != std::string::npos; at = output.find(line, at + 1)) {
            ++times;
        }
        return times;
    }

    int count = 1;
    std::string programName = "test";
    char* values[2] = {programName.data(), nullptr};
    QCoreApplication application{count, values};
    VirtualClock clock{1767225600};
    VirtualMainLoop loop{clock};
    DesktopEntries entries{std::vector<std::filesystem::path>{}, {}};
    Shell shell{};
    SessionFront front{entries, [this] { return clock.now(); }};
    IdleTime idle{[this] { return clock.now(); }};
    ScreensAsleep screens{[](bool) {}};
    UntoldFacts untold{loop, front, idle, screens};
};

TEST_F(UntoldFactsTest, NothingIsSaidOfADesktopThatTells)
{
    EXPECT_EQ(said("没有告诉", 3600), 0);
}

TEST_F(UntoldFactsTest, WhatIsUntoldTenSecondsAfterTheStartIsSaidOnce)
{
    shell.there = false;
    idle.gone(1);
    EXPECT_EQ(said("没有告诉", 9), 0) << "it may still come";
    testing::internal::CaptureStderr();
    loop.runThrough(clock.now() + 1);
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_NE(lines.find(kNoFront), std::string::npos);
    EXPECT_NE(lines.find(kNoIdleTime), std::string::npos);
    setShell(true);
    setShell(false);
    EXPECT_EQ(said("没有告诉", 3600), 0);
}

TEST_F(UntoldFactsTest, WhoGoesWhileWeRunIsMissedOnce)
{
    EXPECT_EQ(said(kNoFront, 3600), 0);
    setShell(false);
    setShell(false);
    EXPECT_EQ(said(kNoFront, 9), 0);
    EXPECT_EQ(said(kNoFront, 1), 1);
    setShell(true);
    setShell(false);
    EXPECT_EQ(said(kNoFront, 3600), 0);
}

TEST_F(UntoldFactsTest, WhoComesBackInTimeIsNotMissed)
{
    EXPECT_EQ(said(kNoFront, 3600), 0);
    setShell(false);
    EXPECT_EQ(said(kNoFront, 9), 0);
    setShell(true);
    EXPECT_EQ(said(kNoFront, 3600), 0);
}

TEST_F(UntoldFactsTest, ALockedDesktopIsExpectedToTellNothing)
{
    EXPECT_EQ(said(kNoFront, 3600), 0);
    screens.set(ScreenSource::sessionLock, true);
    setShell(false);
    EXPECT_EQ(said(kNoFront, 3600), 0);
    screens.set(ScreenSource::sessionLock, false);
    EXPECT_EQ(said(kNoFront, 10), 0) << "it may be starting";
    EXPECT_EQ(said(kNoFront, 10), 1) << "it was switched off meanwhile";
}

TEST_F(UntoldFactsTest, TheLockedDesktopsReturnIsNoAbsence)
{
    screens.set(ScreenSource::sessionLock, true);
    setShell(false);
    EXPECT_EQ(said(kNoFront, 3600), 0);
    setShell(true);
    screens.set(ScreenSource::sessionLock, false);
    EXPECT_EQ(said(kNoFront, 3600), 0);
}

} // namespace
} // namespace quillbrook
