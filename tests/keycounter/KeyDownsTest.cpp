#include "keycounter/keyboards/KeyDowns.h"

#include "tests/keycounter/InputEvents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>

namespace quillbrook {
namespace {

std::uint64_t countIn(const Bytes& bytes)
{
    return KeyDowns().countIn(bytes);
}

TEST(KeyDowns, CountsAKeyWhenItGoesDownAndNotWhenItComesUp)
{
    EXPECT_EQ(countIn(keyDown(KEY_A)), 1);
    EXPECT_EQ(countIn(keyUp(KEY_A)), 0);
    EXPECT_EQ(countIn(typed(KEY_A)), 1);
    EXPECT_EQ(countIn({}), 0);
}

TEST(KeyDowns, LeavesRepeatsOfAHeldKeyOut)
{
    const Bytes held = repeated(
        joinedBytes({eventBytes(EV_KEY, KEY_A, 2), eventBytes(EV_SYN, SYN_REPORT, 1)}), 30);
    EXPECT_EQ(countIn(joinedBytes({keyDown(KEY_A), held, keyUp(KEY_A)})), 1);
}

TEST(KeyDowns, LeavesModifiersOut)
{
    for (const unsigned modifier : {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL,
             KEY_LEFTALT, KEY_RIGHTALT, KEY_LEFTMETA, KEY_RIGHTMETA, KEY_CAPSLOCK, KEY_NUMLOCK}) {
        EXPECT_EQ(countIn(typed(modifier)), 0) << modifier;
    }
    EXPECT_EQ(countIn(joinedBytes({keyDown(KEY_LEFTSHIFT), typed(KEY_A), typed(KEY_B), typed(KEY_C),
                  keyUp(KEY_LEFTSHIFT)})),
        3);
}

TEST(KeyDowns, CountsWhatIsNoLetterToo)
{
    for (const unsigned key : {KEY_ENTER, KEY_BACKSPACE, KEY_F5, KEY_LEFT, KEY_ESC, KEY_TAB,
             KEY_KP7, KEY_SPACE, KEY_COMPOSE, KEY_SCROLLLOCK, KEY_VOLUMEUP}) {
        EXPECT_EQ(countIn(typed(key)), 1) << key;
    }
}

TEST(KeyDowns, LeavesOutWhatIsNoKeyOfAKeyboard)
{
    EXPECT_EQ(countIn(typed(247)), 1) << "the last that an X server knows";
    for (const unsigned code :
        {unsigned{KEY_RESERVED}, 248U, unsigned{BTN_LEFT}, unsigned{BTN_TOUCH}, unsigned{BTN_SOUTH},
            unsigned{KEY_FN}, unsigned{KEY_MAX}, 0xffffU}) {
        EXPECT_EQ(countIn(typed(code)), 0) << code;
    }
    EXPECT_EQ(countIn(eventBytes(EV_REL, REL_X, 1)), 0);
    EXPECT_EQ(countIn(eventBytes(EV_ABS, KEY_A, 1)), 0);
    EXPECT_EQ(countIn(eventBytes(EV_LED, LED_CAPSL, 1)), 0);
    EXPECT_EQ(countIn(eventBytes(EV_REP, REP_DELAY, 1)), 0);
}

TEST(KeyDowns, LeavesOutPressesOfUnheardOfValues)
{
    for (const int value : {-1, 3, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(countIn(eventBytes(EV_KEY, KEY_A, value)), 0) << value;
    }
}

TEST(KeyDowns, FindsTheSameInBytesTornAnywhere)
{
    const Bytes bytes = joinedBytes({typed(KEY_A), typed(KEY_LEFTSHIFT), typed(KEY_B)});
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        KeyDowns keys;
        const std::span all(bytes);
        const auto first = keys.countIn(all.first(cut));
        EXPECT_EQ(first + keys.countIn(all.subspan(cut)), 2) << cut;
    }
    KeyDowns keys;
    std::uint64_t count = 0;
    for (const std::byte& one : bytes) {
        count += keys.countIn(std::span(&one, 1));
    }
    EXPECT_EQ(count, 2);
}

TEST(KeyDowns, CountsAnEventOnlyWhenItIsWhole)
{
    const Bytes press = eventBytes(EV_KEY, KEY_A, 1);
    KeyDowns keys;
    EXPECT_EQ(keys.countIn(std::span(press).first(press.size() - 1)), 0);
    EXPECT_EQ(keys.countIn(std::span(press).last(1)), 1);
}

TEST(KeyDowns, PassesOverWhatFollowsALossUntilTheNextReport)
{
    const Bytes lost = eventBytes(EV_SYN, SYN_DROPPED, 0);
    EXPECT_EQ(countIn(joinedBytes({typed(KEY_A), lost, eventBytes(EV_KEY, KEY_B, 1),
                  eventBytes(EV_KEY, KEY_C, 1), report(), typed(KEY_D)})),
        2);
    EXPECT_EQ(countIn(joinedBytes({lost, lost, eventBytes(EV_KEY, KEY_A, 1)})), 0);

    KeyDowns keys;
    EXPECT_EQ(keys.countIn(lost), 0);
    EXPECT_EQ(keys.countIn(eventBytes(EV_KEY, KEY_A, 1)), 0) << "the loss is known in later bytes";
    EXPECT_EQ(keys.countIn(report()), 0);
    EXPECT_EQ(keys.countIn(typed(KEY_A)), 1);
}

TEST(KeyDowns, CountsTenThousandAtOnce)
{
    EXPECT_EQ(countIn(repeated(typed(KEY_A), 10'000)), 10'000);
}

TEST(KeyDowns, NeverFindsMoreThanThereAreEvents)
{
    std::mt19937 random(7); // NOLINT: the same at each run
    Bytes noise(sizeof(input_event) * 1000 + 5);
    std::ranges::generate(noise, [&random] { return static_cast<std::byte>(random()); });
    EXPECT_LE(countIn(noise), 1000);
}

} // namespace
} // namespace quillbrook
