#include "base/ConstantText.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

constexpr std::string_view kOne = "one, ";
constexpr std::string_view kNothing;
constexpr std::string_view kTwo = "two";
constexpr std::string_view kBoth = joined<kOne, kNothing, kTwo>;

TEST(Joined, IsOneTextOfAllPieces)
{
    static_assert(kBoth == "one, two");
    EXPECT_EQ((joined<kBoth, kBoth>), "one, twoone, two");
}

constexpr std::array<std::string_view, 3> kNames{"Editor", "汉字", "Mail"};
constexpr std::array<std::string_view, 1> kName{"Editor"};

TEST(QuotedList, IsAListOfSql)
{
    EXPECT_EQ(quotedList<kNames>, "'Editor', '汉字', 'Mail'");
    EXPECT_EQ(quotedList<kName>, "'Editor'");
}

} // namespace
} // namespace quillbrook
