#include "platform/linux/keys/DeviceKeyCounting.h"

#include "support/BecomesTrue.h"
#include "tests/keycounter/PipeKeyboards.h"
#include "tests/platform/linux/keys/KeysFixture.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

class DeviceKeyCountingTest : public KeysFixture {
protected:
    DeviceKeyCountingTest()
    {
        std::filesystem::create_directory(folder());
        seats.active = {{kFirstSeat, getuid()}};
    }

    std::string folder() const { return (directory.path() / "input").string(); }
    std::filesystem::path device(const std::string& name) const
    {
        return directory.path() / "input" / name;
    }

    void start()
    {
        counting = std::make_unique<DeviceKeyCounting>(folder(), devices, seats, surroundings());
    }

    /// Lets a keyboard give these keys, and waits until those of a second one are counted, too.
    void expectCounted(PipeKeyboard& keyboard, std::size_t keys)
    {
        const int before = count;
        keyboard.write(repeated(typed(KEY_A), keys));
        EXPECT_TRUE(becomesTrue([&] { return count >= before + static_cast<int>(keys); }));
        EXPECT_EQ(count, before + static_cast<int>(keys));
    }

    KeyCounting::KeyDownHandler handler()
    {
        return [this] { ++count; };
    }

    PipeDevices devices{};
    TestSeats seats{};
    std::unique_ptr<DeviceKeyCounting> counting{};
    int count = 0;
};

TEST_F(DeviceKeyCountingTest, ReadsKeyboardsThatMayBeRead)
{
    PipeKeyboard keyboard(device("event0"));
    start();
    EXPECT_TRUE(counting->isPossible());
    EXPECT_TRUE(DeviceAccessibility(*counting).isTrusted());
    ASSERT_TRUE(counting->addGlobalMonitor(handler()));
    expectCounted(keyboard, 3);
    keyboard.write(joinedBytes({typed(KEY_LEFTSHIFT), eventBytes(EV_KEY, KEY_A, 2)}));
    expectCounted(keyboard, 2);
}

TEST_F(DeviceKeyCountingTest, WithoutReadableKeyboardsAndServiceThereIsNoWay)
{
    devices.refused = {"event0"};
    const PipeKeyboard keyboard(device("event0"));
    start();
    EXPECT_FALSE(counting->isPossible());
    EXPECT_FALSE(DeviceAccessibility(*counting).isTrusted());
    EXPECT_FALSE(counting->addGlobalMonitor(handler()));
    EXPECT_EQ(counting->createTap(handler()), nullptr);
}

TEST_F(DeviceKeyCountingTest, AKeyboardAmongOthersThatMayNotBeReadIsNoWay)
{
    devices.refused = {"event1"};
    const PipeKeyboard keyboard(device("event0"));
    const PipeKeyboard closed(device("event1"));
    start();
    EXPECT_FALSE(counting->isPossible()) << "it would count too little";
}

TEST_F(DeviceKeyCountingTest, AnInstalledServiceIsAWay)
{
    install();
    start();
    EXPECT_TRUE(counting->isPossible());
    EXPECT_TRUE(counting->addGlobalMonitor(handler()));
}

TEST_F(DeviceKeyCountingTest, ATapCountsWhileItIsEnabled)
{
    PipeKeyboard keyboard(device("event0"));
    start();
    int tapped = 0;
    auto tap = counting->createTap([&tapped] { ++tapped; });
    ASSERT_NE(tap, nullptr);
    ASSERT_TRUE(counting->addGlobalMonitor(handler()));
    expectCounted(keyboard, 1);
    EXPECT_EQ(tapped, 0);
    tap->enable(true);
    expectCounted(keyboard, 2);
    EXPECT_EQ(tapped, 2);
    tap->enable(false);
    expectCounted(keyboard, 1);
    tap->enable(true);
    tap.reset();
    expectCounted(keyboard, 1);
    EXPECT_EQ(tapped, 2);
}

TEST_F(DeviceKeyCountingTest, KeysOfAnotherUsersSessionDontCount)
{
    PipeKeyboard keyboard(device("event0"));
    PipeKeyboard elsewhere(device("event1"));
    devices.seats["event1"] = "seat1";
    start();
    ASSERT_TRUE(counting->addGlobalMonitor(handler()));
    expectCounted(keyboard, 1);
    seats.active = {{"seat0", getuid() + 1}, {"seat1", getuid()}};
    keyboard.write(typed(KEY_A));
    expectCounted(elsewhere, 1);
    seats.active = {};
    keyboard.write(typed(KEY_A));
    elsewhere.write(typed(KEY_A));
    bool isLater = false;
    mainLoop.runAfter(0.2, [&isLater] { isLater = true; });
    ASSERT_TRUE(becomesTrue([&isLater] { return isLater; }));
    EXPECT_EQ(count, 2);
}

TEST_F(DeviceKeyCountingTest, WithoutAnAccountOfSeatsAllKeysAreOurs)
{
    PipeKeyboard keyboard(device("event0"));
    seats.active = {};
    seats.isKept = false;
    start();
    ASSERT_TRUE(counting->addGlobalMonitor(handler()));
    expectCounted(keyboard, 2);
}

TEST_F(DeviceKeyCountingTest, KeyboardsMayComeLater)
{
    start();
    EXPECT_FALSE(counting->isPossible());
    PipeKeyboard keyboard(device("event0"));
    ASSERT_TRUE(becomesTrue([this] { return counting->isPossible(); }));
    ASSERT_TRUE(counting->addGlobalMonitor(handler()));
    expectCounted(keyboard, 1);
    keyboard.vanish();
    EXPECT_TRUE(becomesTrue([this] { return !counting->isPossible(); }));
    PipeKeyboard again(device("event0"));
    ASSERT_TRUE(becomesTrue([this] { return counting->isPossible(); }));
    expectCounted(again, 1);
}

} // namespace
} // namespace quillbrook
