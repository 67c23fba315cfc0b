#include "shell/model/StoredFrame.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(StoredFrame, IsReadFromFourNumbers)
{
    EXPECT_EQ(storedFrame("100 80 960 680"),
        (StoredFrame{.x = 100, .y = 80, .width = 960, .height = 680}));
    EXPECT_EQ(
        storedFrame("-1920 -5 1 1"), (StoredFrame{.x = -1920, .y = -5, .width = 1, .height = 1}));
}

TEST(StoredFrame, OtherTextsTellNone)
{
    for (const auto* text : {"", " ", "100", "100 80 960", "100 80 960 680 ", "100 80 960 680 1",
             "100  80 960 680", "a b c d", "100 80 960 6e1", "99999999999 0 1 1"}) {
        EXPECT_EQ(storedFrame(text), std::nullopt) << text;
    }
}

TEST(StoredFrame, OneWithoutAnAreaIsNone)
{
    EXPECT_EQ(storedFrame("0 0 0 680"), std::nullopt);
    EXPECT_EQ(storedFrame("0 0 960 -1"), std::nullopt);
}

TEST(StoredFrame, OneWhoseSumsAreNoNumbersIsNone)
{
    EXPECT_EQ(storedFrame("2147483647 0 960 680"), std::nullopt);
    EXPECT_EQ(storedFrame("0 -2147483648 960 680"), std::nullopt);
    EXPECT_EQ(storedFrame("5 5 2147483647 2147483647"), std::nullopt);
}

} // namespace
} // namespace quillbrook
