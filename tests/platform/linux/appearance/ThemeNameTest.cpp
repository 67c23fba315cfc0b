#include "platform/linux/appearance/ThemeName.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbrook {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kHead = "\0\0\0\0\1\0\0\0"sv;
constexpr std::string_view kNumber = "\0\0\5\0A/Bcd\0\0\0\1\0\0\0\7\0\0\0"sv;
constexpr std::string_view kColor = "\2\0\1\0C\0\0\0\1\0\0\0\1\1\2\2\3\3\4\4"sv;
constexpr std::string_view kTheme = "\1\0\15\0Net/ThemeName\0\0\0\1\0\0\0\14\0\0\0Adwaita-dark"sv;

std::string settings(std::string_view count, std::initializer_list<std::string_view> parts)
{
    std::string all(kHead);
    all += count;
    for (const std::string_view part : parts) {
        all += part;
    }
    return all;
}

TEST(ThemeName, StandsAmongOtherSettings)
{
    EXPECT_EQ(themeNameIn(settings("\3\0\0\0"sv, {kNumber, kColor, kTheme})), "Adwaita-dark");
}

TEST(ThemeName, IsReadInEitherOrderOfBytes)
{
    EXPECT_EQ(
        themeNameIn("\1\0\0\0\0\0\0\1\0\0\0\1\1\0\0\15Net/ThemeName\0\0\0\0\0\0\1\0\0\0\3Abc\0"sv),
        "Abc");
}

TEST(ThemeName, IsMissingWhereNoneIsTold)
{
    EXPECT_EQ(themeNameIn(""), std::nullopt);
    EXPECT_EQ(themeNameIn(settings("\2\0\0\0"sv, {kNumber, kColor})), std::nullopt);
    EXPECT_EQ(themeNameIn(settings("\1\0\0\0"sv, {kNumber, kTheme})), std::nullopt);
}

TEST(ThemeName, IsMissingInSettingsThatEndTooEarlyOrAreOfNoKind)
{
    const std::string whole = settings("\3\0\0\0"sv, {kNumber, kColor, kTheme});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(themeNameIn(std::string_view(whole).substr(0, length)), std::nullopt) << length;
    }
    EXPECT_EQ(themeNameIn(settings("\377\377\377\377"sv, {kNumber})), std::nullopt);
    EXPECT_EQ(themeNameIn(settings("\2\0\0\0"sv, {"\7\0\0\0\0\0\0\0"sv, kTheme})), std::nullopt);
    EXPECT_EQ(themeNameIn(settings(
                  "\1\0\0\0"sv, {"\1\0\15\0Net/ThemeName\0\0\0\1\0\0\0\377\377\377\377Abc\0"sv})),
        std::nullopt);
}

TEST(ThemeName, TellsADarkThemeByAWordOfItsName)
{
    for (const char* name : {"Adwaita-dark", "Breeze-Dark", "Mint-Y-Dark-Aqua", "Adwaita:dark",
             "dark", "Materia-dark-compact"}) {
        EXPECT_TRUE(isDarkTheme(name)) << name;
    }
    for (const char* name : {"", "Adwaita", "Arc-Darker", "Darkness", "Greybird", "-", "--"}) {
        EXPECT_FALSE(isDarkTheme(name)) << name;
    }
}

} // namespace
} // namespace quillbrook
