#include "platform/linux/keys/DeviceKeyCounting.h"

#include "support/BecomesTrue.h"
#include "tests/keycounter/PipeKeyboards.h"
#include "tests/platform/linux/keys/KeysFixture.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

/// Our end and the real service, a process of its own, with pipes for keyboards; we ourselves have
/// none at first.
class KeyCounterServiceTest : public KeysFixture {
protected:
    KeyCounterServiceTest()
    {
        std::filesystem::create_directory(folder());
        std::filesystem::create_directory(ownFolder());
        seats.active = {{kFirstSeat, getuid()}};
        setActiveUser(getuid());
    }
    ~KeyCounterServiceTest() override { stopService(); }

    KeyCounterServiceTest(const KeyCounterServiceTest&) = delete;
    KeyCounterServiceTest& operator=(const KeyCounterServiceTest&) = delete;

    std::string ownFolder() const { return (directory.path() / "own").string(); }
    std::string folder() const { return (directory.path() / "input").string(); }

    void setActiveUser(uid_t user) const
    {
        std::ofstream(directory.path() / "seats.new") << user << "\n" << getuid() << "\n";
        std::filesystem::rename(directory.path() / "seats.new", directory.path() / "seats");
    }

    void startService()
    {
        service = std::make_unique<QProcess>();
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LD_PRELOAD", EVDEV_ON_PIPES_LIBRARY);
        environment.insert("TEST_SEATS", QString::fromStdString(directory.path() / "seats"));
        service->setProcessEnvironment(environment);
        service->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        service->setProcessChannelMode(QProcess::ForwardedChannels);
        service->start(QStringLiteral(KEYCOUNTER), {QString::fromStdString(folder())});
        ASSERT_TRUE(service->waitForStarted());
    }

    void stopService()
    {
        if (service) {
            service->kill();
            service->waitForFinished();
            service.reset();
        }
    }

    void startCounting()
    {
        counting = std::make_unique<DeviceKeyCounting>(ownFolder(), devices, seats, surroundings());
        ASSERT_TRUE(becomesTrue([this] { return counting->isPossible(); }));
        ASSERT_TRUE(counting->addGlobalMonitor([this] { ++count; }));
    }

    bool waitForCount(int wanted)
    {
        return becomesTrue([this, wanted] { return count >= wanted; }) && count == wanted;
    }

    PipeDevices devices{};
    TestSeats seats{};
    std::unique_ptr<QProcess> service{};
    std::unique_ptr<DeviceKeyCounting> counting{};
    int count = 0;
};

TEST_F(KeyCounterServiceTest, CountsWhatTheServiceReads)
{
    PipeKeyboard keyboard(directory.path() / "input" / "event0");
    startService();
    startCounting();
    keyboard.write(joinedBytes({typed(KEY_A), typed(KEY_LEFTSHIFT), typed(KEY_B)}));
    EXPECT_TRUE(waitForCount(2)) << count;
}

TEST_F(KeyCounterServiceTest, CountsNothingWhileAnotherUserIsActive)
{
    PipeKeyboard keyboard(directory.path() / "input" / "event0");
    startService();
    startCounting();
    keyboard.write(typed(KEY_A));
    ASSERT_TRUE(waitForCount(1)) << count;
    setActiveUser(getuid() + 1);
    keyboard.write(repeated(typed(KEY_A), 5));
    bool isLater = false;
    mainLoop.runAfter(1.2, [&isLater] { isLater = true; });
    ASSERT_TRUE(becomesTrue([&isLater] { return isLater; }));
    setActiveUser(getuid());
    keyboard.write(typed(KEY_A));
    EXPECT_TRUE(waitForCount(2)) << count;
}

TEST_F(KeyCounterServiceTest, GoesOnWithAServiceThatWasKilledAndStartedAnew)
{
    PipeKeyboard keyboard(directory.path() / "input" / "event0");
    startService();
    startCounting();
    keyboard.write(typed(KEY_A));
    ASSERT_TRUE(waitForCount(1)) << count;
    stopService();
    ASSERT_TRUE(becomesTrue([this] { return !counting->isPossible(); }));
    keyboard.hangUp();
    startService();
    ASSERT_TRUE(becomesTrue([this] { return counting->isPossible(); }));
    keyboard.write(repeated(typed(KEY_A), 3));
    EXPECT_TRUE(waitForCount(4)) << count;
}

TEST_F(KeyCounterServiceTest, LeavesTheServiceWhenTheKeyboardsMayBeReadHere)
{
    PipeKeyboard keyboard(directory.path() / "input" / "event0");
    startService();
    startCounting();
    keyboard.write(typed(KEY_A));
    ASSERT_TRUE(waitForCount(1)) << count;

    // The same keyboard, as we may read it from now on.
    PipeKeyboard same(directory.path() / "own" / "event0");
    EXPECT_TRUE(becomesTrue([&keyboard] { return keyboard.isLeft(); }));
    EXPECT_TRUE(counting->isPossible());
    same.write(repeated(typed(KEY_A), 3));
    EXPECT_TRUE(waitForCount(4)) << count;
}

} // namespace
} // namespace quillbrook
