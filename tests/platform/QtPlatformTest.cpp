#include "platform/qt/QtDirectories.h"
#include "platform/qt/QtLocaleText.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtUserDefaults.h"
#include "platform/qt/QtWorkQueues.h"
#include "platform/qt/SystemClock.h"
#include "platform/qt/SystemTimeZone.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;

/// An application in a home of its own, so that no setting of the user's is touched.
class QtPlatformTest : public testing::Test {
protected:
    QtPlatformTest()
    {
        setenv("HOME", home.path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home.path() / "config").c_str(), 1);
        setenv("XDG_DATA_HOME", (home.path() / "data").c_str(), 1);
    }

    TemporaryDirectory home{};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
};

TEST_F(QtPlatformTest, TheClockIsTheWallClock)
{
    const auto seconds = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    EXPECT_NEAR(SystemClock().now(), static_cast<double>(seconds), 2);
}

TEST_F(QtPlatformTest, TheZoneIsTheOneOfNow)
{
    const SystemTimeZone zone;
    setenv("TZ", "UTC-8", 1); // in this notation, east of Greenwich is negative
    EXPECT_EQ(zone.secondsFromUtc(1767225600), 28800);
    setenv("TZ", "EST5EDT,M3.2.0,M11.1.0", 1);
    EXPECT_EQ(zone.secondsFromUtc(1767225600), -18000);
    EXPECT_EQ(zone.secondsFromUtc(1782864000), -14400);
    unsetenv("TZ");
}

TEST_F(QtPlatformTest, TimersAndBlocksRunOnTheLoop)
{
    QtMainLoop loop;
    std::vector<std::string> notes;
    loop.post([&] { notes.emplace_back("posted"); });
    loop.runAfter(0.02, [&] { notes.emplace_back("delayed"); });
    loop.repeatEvery(0.05, [&, round = 0]() mutable {
        notes.emplace_back("round");
        if (++round == 3) {
            QCoreApplication::quit();
        }
    });
    EXPECT_TRUE(notes.empty());
    QCoreApplication::exec();
    EXPECT_THAT(notes, ElementsAre("posted", "delayed", "round", "round", "round"));
}

TEST_F(QtPlatformTest, WorkRunsOffTheMainThreadAndComesBack)
{
    QtMainLoop loop;
    QtWorkQueues queues;
    const QThread* main = QThread::currentThread();
    std::vector<bool> isOnMain;
    const auto work = [&] {
        const bool here = QThread::currentThread() == main;
        loop.post([&, here] {
            isOnMain.push_back(here);
            isOnMain.push_back(QThread::currentThread() == main);
            if (isOnMain.size() == 4) {
                QCoreApplication::quit();
            }
        });
    };
    queues.runUserInitiated(work);
    queues.runDefault(work);
    QCoreApplication::exec();
    EXPECT_THAT(isOnMain, ElementsAre(false, true, false, true));
}

TEST_F(QtPlatformTest, DefaultsLastAndKeepEveryDigit)
{
    const double value = 1767225600.123456;
    QtUserDefaults().setDouble("lastRecordedBootTime", value);
    EXPECT_EQ(QtUserDefaults().doubleForKey("lastRecordedBootTime"), value);
    EXPECT_EQ(QtUserDefaults().doubleForKey("none"), 0);
    EXPECT_TRUE(std::filesystem::exists(home.path() / "config/tarnlow.cn/quillbrook.conf"));
}

TEST_F(QtPlatformTest, DefaultsHoldTruthsTextsAndWholeNumbers)
{
    QtUserDefaults().setBool("hasLaunchedBefore", true);
    QtUserDefaults().setString("lastLaunchedVersion", "1.2, beta — 版");
    QtUserDefaults().setInteger("birthYear", 9007199254740993);
    QtUserDefaults().setDouble("number", 7.9);
    EXPECT_TRUE(QtUserDefaults().boolForKey("hasLaunchedBefore"));
    EXPECT_EQ(QtUserDefaults().stringForKey("lastLaunchedVersion"), "1.2, beta — 版");
    EXPECT_EQ(QtUserDefaults().integerForKey("birthYear"), 9007199254740993);
    EXPECT_EQ(QtUserDefaults().integerForKey("number"), 7);
    EXPECT_FALSE(QtUserDefaults().boolForKey("none"));
    EXPECT_EQ(QtUserDefaults().stringForKey("none"), "");
    EXPECT_EQ(QtUserDefaults().integerForKey("none"), 0);
}

TEST_F(QtPlatformTest, DataLiesInTheApplicationSupportDirectory)
{
    EXPECT_EQ(QtDirectories().dataDirectory(), home.path() / "data/cn.tarnlow.quillbrook");
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(QtDirectories().dataDirectory(), home.path() / ".local/share/cn.tarnlow.quillbrook");
}

TEST_F(QtPlatformTest, TextIsComparedWithoutCase)
{
    EXPECT_TRUE(QtLocaleText().containsIgnoringCase("MyQuillBROOK", "Quillbrook"));
    EXPECT_TRUE(QtLocaleText().containsIgnoringCase("Éditeur", "éd"));
    EXPECT_FALSE(QtLocaleText().containsIgnoringCase("Quill brook", "Quillbrook"));
}

TEST_F(QtPlatformTest, TextIsOrderedWithoutCase)
{
    EXPECT_LT(QtLocaleText().compareIgnoringCase("alpha", "Beta"), 0);
    EXPECT_GT(QtLocaleText().compareIgnoringCase("Zeta", "beta"), 0);
    EXPECT_EQ(QtLocaleText().compareIgnoringCase("ÉDITEUR", "éditeur"), 0);
    EXPECT_LT(QtLocaleText().compareIgnoringCase("Mail", "Mailbox"), 0);
}

} // namespace
} // namespace quillbrook
