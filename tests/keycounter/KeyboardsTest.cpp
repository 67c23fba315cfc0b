#include "keycounter/keyboards/Keyboards.h"

#include "tests/keycounter/PipeKeyboards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <poll.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class KeyboardsTest : public testing::Test {
protected:
    std::string folder() const { return (directory.path() / "input").string(); }
    std::filesystem::path device(const std::string& name) const
    {
        return directory.path() / "input" / name;
    }

    static bool isReadable(const Keyboards& keyboards)
    {
        pollfd one{.fd = keyboards.descriptor(), .events = POLLIN, .revents = 0};
        return poll(&one, 1, 0) == 1;
    }

    /// All key-downs that are there, until nothing is left to take.
    static std::map<std::string, std::uint64_t> takenFrom(Keyboards& keyboards)
    {
        std::map<std::string, std::uint64_t> all;
        while (isReadable(keyboards)) {
            for (const auto& [seat, count] : keyboards.takeKeyDowns()) {
                all[seat] += count;
            }
        }
        return all;
    }

    TemporaryDirectory directory{};
    PipeDevices devices{};
};

class KeyboardsInFolderTest : public KeyboardsTest {
protected:
    KeyboardsInFolderTest() { std::filesystem::create_directory(folder()); }
};

TEST_F(KeyboardsInFolderTest, CountsTheKeysOfAllKeyboardsTogether)
{
    PipeKeyboard first(device("event0"));
    PipeKeyboard second(device("event11"));
    Keyboards keyboards(folder(), devices);
    EXPECT_FALSE(isReadable(keyboards));
    first.write(typed(KEY_A));
    second.write(repeated(typed(KEY_B), 3));
    EXPECT_TRUE(isReadable(keyboards));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 4)));
    EXPECT_FALSE(isReadable(keyboards)) << "nothing wakes the reader at rest";
}

TEST_F(KeyboardsInFolderTest, KeepsSeatsApart)
{
    PipeKeyboard first(device("event0"));
    PipeKeyboard second(device("event1"));
    devices.seats["event1"] = "seat1";
    Keyboards keyboards(folder(), devices);
    first.write(typed(KEY_A));
    second.write(repeated(typed(KEY_B), 3));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1), Pair("seat1", 3)));
}

TEST_F(KeyboardsInFolderTest, CountsForNobodyWhileTheSeatIsUnknown)
{
    PipeKeyboard keyboard(device("event0"));
    devices.seats["event0"] = std::nullopt;
    Keyboards keyboards(folder(), devices);
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), IsEmpty());
    devices.seats["event0"] = "seat1";
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat1", 1)));
}

TEST_F(KeyboardsInFolderTest, FollowsAKeyboardToAnotherSeat)
{
    PipeKeyboard keyboard(device("event0"));
    Keyboards keyboards(folder(), devices);
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
    devices.seats["event0"] = "seat1";
    std::filesystem::permissions(device("event0"), std::filesystem::perms::owner_all);
    takenFrom(keyboards);
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat1", 1)));
}

TEST_F(KeyboardsInFolderTest, OpensEventDevicesAlone)
{
    const PipeKeyboard mouse(device("mouse0"));
    const PipeKeyboard odd(device("eventful"));
    const PipeKeyboard bare(device("event"));
    std::filesystem::create_directory(device("by-id"));
    Keyboards keyboards(folder(), devices);
    const PipeKeyboard later(device("mice"));
    takenFrom(keyboards);
    EXPECT_THAT(devices.openings, IsEmpty());
}

TEST_F(KeyboardsInFolderTest, PassesOverWhatIsNoKeyboard)
{
    std::ofstream(device("event0")) << "no keyboard";
    Keyboards keyboards(folder(), devices);
    EXPECT_FALSE(isReadable(keyboards));
    EXPECT_FALSE(keyboards.areAllReadable()) << "there is none";
    PipeKeyboard keyboard(device("event1"));
    EXPECT_THAT(takenFrom(keyboards), IsEmpty());
    EXPECT_TRUE(keyboards.areAllReadable());
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
}

TEST_F(KeyboardsInFolderTest, TakesUpAKeyboardThatIsPluggedInLater)
{
    Keyboards keyboards(folder(), devices);
    PipeKeyboard keyboard(device("event3"));
    EXPECT_THAT(takenFrom(keyboards), IsEmpty());
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
    EXPECT_EQ(devices.openings["event3"], 1);
}

TEST_F(KeyboardsInFolderTest, TakesUpAKeyboardOnceItMayBeRead)
{
    devices.refused = {"event0"};
    PipeKeyboard keyboard(device("event0"));
    Keyboards keyboards(folder(), devices);
    EXPECT_FALSE(keyboards.areAllReadable());
    devices.refused.clear();
    std::filesystem::permissions(device("event0"), std::filesystem::perms::owner_all);
    takenFrom(keyboards);
    EXPECT_TRUE(keyboards.areAllReadable());
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
}

TEST_F(KeyboardsInFolderTest, TellsWhenADeviceMayNotBeReadBesideAKeyboard)
{
    const PipeKeyboard keyboard(device("event0"));
    devices.refused = {"event1"};
    Keyboards keyboards(folder(), devices);
    EXPECT_TRUE(keyboards.areAllReadable());
    {
        const PipeKeyboard closed(device("event1"));
        takenFrom(keyboards);
        EXPECT_FALSE(keyboards.areAllReadable());
    }
    takenFrom(keyboards);
    EXPECT_TRUE(keyboards.areAllReadable());
}

TEST_F(KeyboardsInFolderTest, OutlivesAKeyboardThatVanishesWithinAnEvent)
{
    PipeKeyboard first(device("event0"));
    PipeKeyboard second(device("event1"));
    Keyboards keyboards(folder(), devices);
    const Bytes press = keyDown(KEY_A);
    first.write(joinedBytes({press, Bytes(press.begin(), press.begin() + 30)}));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
    first.vanish();
    EXPECT_THAT(takenFrom(keyboards), IsEmpty());
    EXPECT_FALSE(isReadable(keyboards));

    PipeKeyboard again(device("event0"));
    EXPECT_THAT(takenFrom(keyboards), IsEmpty());
    again.write(typed(KEY_A));
    second.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 2)))
        << "nothing of the one before is left";
}

TEST_F(KeyboardsInFolderTest, GivesUpAKeyboardThatEndsWhileItsFileStays)
{
    PipeKeyboard keyboard(device("event0"));
    Keyboards keyboards(folder(), devices);
    keyboard.write(typed(KEY_A));
    keyboard.hangUp();
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
    EXPECT_FALSE(keyboards.areAllReadable());
    EXPECT_FALSE(isReadable(keyboards)) << "its end wakes the reader once";
}

TEST_F(KeyboardsInFolderTest, ReadsEventsThatComeInPieces)
{
    PipeKeyboard keyboard(device("event0"));
    Keyboards keyboards(folder(), devices);
    std::uint64_t count = 0;
    for (const std::byte one : repeated(typed(KEY_A), 3)) {
        keyboard.write({one});
        count += takenFrom(keyboards)["seat0"];
    }
    EXPECT_EQ(count, 3);
}

TEST_F(KeyboardsInFolderTest, TakesAFloodInParts)
{
    PipeKeyboard keyboard(device("event0"));
    PipeKeyboard other(device("event1"));
    Keyboards keyboards(folder(), devices);
    keyboard.write(repeated(keyDown(KEY_A), 10'000));
    other.write(typed(KEY_B));
    const auto first = keyboards.takeKeyDowns()["seat0"];
    EXPECT_GT(first, 1);
    EXPECT_LT(first, 1000) << "whoever else waits gets a turn";
    EXPECT_TRUE(isReadable(keyboards));
    EXPECT_EQ(first + takenFrom(keyboards)["seat0"], 10'001);
}

TEST_F(KeyboardsTest, WaitsForAFolderThatIsMissing)
{
    Keyboards keyboards(folder(), devices);
    std::ofstream(directory.path() / "other") << "";
    takenFrom(keyboards);
    std::filesystem::create_directory(folder());
    PipeKeyboard keyboard(device("event0"));
    takenFrom(keyboards);
    keyboard.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));

    keyboard.vanish();
    std::filesystem::remove(folder());
    takenFrom(keyboards);
    std::filesystem::create_directory(folder());
    PipeKeyboard later(device("event0"));
    takenFrom(keyboards);
    later.write(typed(KEY_A));
    EXPECT_THAT(takenFrom(keyboards), ElementsAre(Pair("seat0", 1)));
}

TEST_F(KeyboardsTest, StandsAMissingParentFolder)
{
    Keyboards keyboards((directory.path() / "none" / "input").string(), devices);
    EXPECT_FALSE(isReadable(keyboards));
    EXPECT_THAT(keyboards.takeKeyDowns(), IsEmpty());
}

} // namespace
} // namespace quillbrook
