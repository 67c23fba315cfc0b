#include "platform/linux/words/OutsideName.h"

#include <gtest/gtest.h>

#include <string>

namespace quillbrook {
namespace {

std::string repeated(const std::string& text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(OutsideName, KeepsOrdinaryNames)
{
    for (const char* name : {"", "XTerm", "O'Neil \"q\" 📝", "Visual Studio Code", "网易云音乐",
             "é ß \u00A0 ⚠️", "Minecraft* 1.20.1"}) {
        EXPECT_EQ(outsideName(name), name);
    }
}

TEST(OutsideName, HasBlanksForControlCharacters)
{
    EXPECT_EQ(outsideName("a\n[2026-01-01T00:00:00Z] ✅"), "a [2026-01-01T00:00:00Z] ✅");
    EXPECT_EQ(outsideName(std::string("a\0b\x01z\x1f\x7f!", 9)), "a b z  !");
    EXPECT_EQ(outsideName("a\r\nb\tc\x1b[2J"), "a  b c [2J");
    EXPECT_EQ(outsideName("a\u0085b\u009Bc\u2028d\u2029e"), "a b c d e");
    EXPECT_EQ(outsideName("a\xC2"), "a\uFFFD");
}

TEST(OutsideName, HasNoBlanksAtItsEnds)
{
    EXPECT_EQ(outsideName(" zoom \n"), "zoom");
    EXPECT_EQ(outsideName("\n \u0085\t"), "");
}

TEST(OutsideName, HasAtMostTwoHundredCharacters)
{
    EXPECT_EQ(outsideName(repeated("n", 200)), repeated("n", 200));
    EXPECT_EQ(outsideName(repeated("n", 201)), repeated("n", 200));
    EXPECT_EQ(outsideName(repeated("谱", 16384)), repeated("谱", 200));
    EXPECT_EQ(outsideName(repeated("📝", 201)), repeated("📝", 200));
    EXPECT_EQ(outsideName(repeated("n", 199) + " n"), repeated("n", 199));
    EXPECT_EQ(outsideName("\n" + repeated("n", 200)), repeated("n", 200));
}

} // namespace
} // namespace quillbrook
