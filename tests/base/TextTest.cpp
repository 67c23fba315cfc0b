#include "base/Text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillbrook {
namespace {

TEST(ShortestText, ReadsBackAsTheSameNumber)
{
    EXPECT_EQ(shortestText(0.1), "0.1");
    EXPECT_EQ(shortestText(1767225600.25), "1767225600.25");
    EXPECT_EQ(shortestText(-2.5), "-2.5");
    EXPECT_EQ(std::stod(shortestText(1.0 / 3)), 1.0 / 3);
}

TEST(ShortestText, WholeNumbersHaveNoFraction)
{
    EXPECT_EQ(shortestText(1767225600), "1767225600");
    EXPECT_EQ(shortestText(0), "0");
}

TEST(ShortestTextDeathTest, RefusesWhatIsNotFinite)
{
    EXPECT_DEATH(shortestText(std::numeric_limits<double>::infinity()), "not a finite number");
    EXPECT_DEATH(shortestText(std::numeric_limits<double>::quiet_NaN()), "not a finite number");
}

TEST(FixedText, RoundsToTheNearest)
{
    EXPECT_EQ(fixedText(12.34, 1), "12.3");
    EXPECT_EQ(fixedText(0.25, 1), "0.2"); // a tie goes to the even digit
    EXPECT_EQ(fixedText(99.95, 0), "100");
    EXPECT_EQ(fixedText(-1, 2), "-1.00");
    EXPECT_EQ(fixedText(1e308, 0).size(), 309U);
}

TEST(SqlQuoted, DoublesEachSingleQuote)
{
    EXPECT_EQ(sqlQuoted("it's '' \"x\""), "it''s '''' \"x\"");
    EXPECT_EQ(sqlQuoted(""), "");
}

TEST(Filled, PutsValuesInOrderAndLeavesOtherBracesAlone)
{
    EXPECT_EQ(filled("{} = {}; {\"a\":{}}", {"x", "{}", "1"}), "x = {}; {\"a\":1}");
    EXPECT_EQ(filled("none", {}), "none");
}

TEST(FilledDeathTest, RefusesAnotherNumberOfValues)
{
    EXPECT_DEATH(filled("{} {}", {"x"}), "more places than values");
    EXPECT_DEATH(filled("{}", {"x", "y"}), "more values than places");
}

TEST(ValidUtf8, KeepsWellFormedText)
{
    const std::string text = "a é 汉 😀 \xF4\x8F\xBF\xBF";
    EXPECT_EQ(validUtf8(text), text);
}

TEST(ValidUtf8, ReplacesEachByteThatIsNoPartOfACharacter)
{
    const std::string mark = "\xEF\xBF\xBD";
    EXPECT_EQ(validUtf8("a\xFFz"), "a" + mark + "z");
    EXPECT_EQ(validUtf8("\xC0\x80"), mark + mark); // overlong
    EXPECT_EQ(validUtf8("\xE0\x9F\xBF"), mark + mark + mark); // overlong
    EXPECT_EQ(validUtf8("\xED\xA0\x80"), mark + mark + mark); // a surrogate
    EXPECT_EQ(validUtf8("\xF4\x90\x80\x80"), mark + mark + mark + mark); // above U+10FFFF
    EXPECT_EQ(validUtf8("\xE6\xB1"), mark + mark); // cut short
    EXPECT_EQ(validUtf8("\xE6汉"), mark + "汉");
}

TEST(FirstCharacters, CountsCharactersAndNotBytes)
{
    EXPECT_EQ(firstCharacters("汉字a", 2), "汉字");
    EXPECT_EQ(firstCharacters("汉字a", 3), "汉字a");
    EXPECT_EQ(firstCharacters("汉字a", 80), "汉字a");
    EXPECT_EQ(firstCharacters("abc", 0), "");
}

TEST(AsciiLowered, LeavesAllElseAlone)
{
    EXPECT_EQ(asciiLowered("Com.Apple.ÀZ@["), "com.apple.Àz@[");
}

TEST(IsValidUtf8, RefusesWhatValidUtf8WouldReplace)
{
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_TRUE(isValidUtf8("今天|Today\n"));
    EXPECT_FALSE(isValidUtf8("Today\xFF"));
    EXPECT_FALSE(isValidUtf8("\xE4\xBB"));
}

TEST(IsValidUtf8, FindsOneBadByteAnywhereInAChineseText)
{
    const std::string good = "今天开发工具鿿䀀";
    EXPECT_TRUE(isValidUtf8(good));
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (const char byte : {'a', '\xFF', '\xC0'}) {
            std::string bad = good;
            bad[at] = byte;
            EXPECT_EQ(isValidUtf8(bad), bad == good) << at;
        }
        EXPECT_EQ(isValidUtf8(good.substr(0, at)), at % 3 == 0);
    }
}

TEST(IsValidUtf8, FindsOneBadByteAnywhereInALongText)
{
    const std::string good(40, 'a');
    EXPECT_TRUE(isValidUtf8(good));
    for (std::size_t at = 0; at < good.size(); ++at) {
        std::string bad = good;
        bad[at] = '\x80';
        EXPECT_FALSE(isValidUtf8(bad)) << at;
        EXPECT_EQ(validUtf8(bad).size(), good.size() + 2) << at;
    }
}

} // namespace
} // namespace quillbrook
