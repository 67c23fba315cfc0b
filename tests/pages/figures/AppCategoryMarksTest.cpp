#include "pages/figures/AppCategoryMarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

const TextWidth kSixPoints
    = [](std::string_view text, const TextFace&) { return static_cast<double>(text.size()) * 6; };

constexpr Size kRow{400, 41};
const Tint kAccent{InterfaceColor::accent};

AppEntry editor()
{
    return {.appName = "Editor",
        .bundleId = "org.example.editor",
        .categoryKey = "office",
        .categoryLabel = "office"};
}

std::vector<Mark> rowOf(const AppEntry& app, bool isLast = false)
{
    return appRowMarks(app, isLast, kRow, kSixPoints);
}

TEST(AppRow, IsARowWithTileTextsDotAndDivider)
{
    const auto marks = rowOf(editor());
    ASSERT_THAT(marks, SizeIs(4));
    EXPECT_EQ(marks[0].shape, (Shape{Box{{0, 0, 400, 40}, 6}}));
    EXPECT_EQ(marks[0].fills, std::vector{Tint{InterfaceColor::controlBackground}});
    EXPECT_EQ(marks[0].role, MarkRole::row);
    EXPECT_EQ(marks[0].name, "Editor");
    EXPECT_EQ(marks[0].value, "org.example.editor, office");
    EXPECT_EQ(marks[0].help, "");
    const std::vector<TextLine> texts{
        {.place = {354, 12.5, 36, 15},
            .text = "office",
            .face = {TextFamily::system, 12},
            .tint = secondaryTint(),
            .alignment = TextAlignment::trailing},
        {.place = {56, 5.25, 278, 16.25},
            .text = "Editor",
            .face = {TextFamily::system, 13, TextWeight::medium}},
        {.place = {56, 23.5, 278, 11.25},
            .text = "org.example.editor",
            .face = {TextFamily::system, 9},
            .tint = secondaryTint()},
    };
    EXPECT_EQ(marks[0].texts, texts);
    EXPECT_THAT(marks[0].symbols, IsEmpty());

    EXPECT_EQ(marks[1].shape, (Shape{Box{{10, 4, 32, 32}, 6}}));
    EXPECT_EQ(marks[1].fills, std::vector{Tint(InterfaceColor::accent, 0.15)});
    EXPECT_EQ(marks[1].texts[0].text, "Ed");
    EXPECT_EQ(marks[1].texts[0].face, (TextFace{TextFamily::system, 12, TextWeight::medium}));

    EXPECT_EQ(marks[2].shape, (Shape{Circle{{344, 20}, 4}}));
    EXPECT_EQ(marks[2].fills, std::vector{Tint{colorFromHex("#F97316")}});
    EXPECT_EQ(marks[3], lineMark({56, 40.5}, {400, 40.5}, {InterfaceColor::separator}));
}

TEST(AppRow, TheLastHasNoDivider)
{
    EXPECT_THAT(rowOf(editor(), true), SizeIs(3));
}

TEST(AppRow, AnOwnChoiceIsInTheAccentColourWithAPersonAndIsSpokenOf)
{
    AppEntry app = editor();
    app.hasUserOverride = true;
    const auto marks = rowOf(app);
    EXPECT_EQ(marks[0].value, "org.example.editor, office, 自选");
    EXPECT_EQ(
        marks[0].symbols, std::vector{(SymbolMark{{379, 14.5, 11, 11}, "person.fill", kAccent})});
    EXPECT_EQ(marks[0].texts[0].tint, kAccent);
    EXPECT_EQ(marks[0].texts[0].place, (Rect{337, 12.5, 36, 15}));
    EXPECT_EQ(marks[2].shape, (Shape{Circle{{327, 20}, 4}}));
}

TEST(AppRow, AnUnknownCategoryIsGrey)
{
    AppEntry app = editor();
    app.categoryKey = "homework";
    EXPECT_EQ(rowOf(app)[2].fills, std::vector{Tint{colorFromHex("#9CA3AF")}});
}

TEST(AppRow, TheTileHasTheFirstTwoCharactersOrWhatThereIs)
{
    AppEntry app = editor();
    const auto initials = [&app](const char* name) {
        app.appName = name;
        return rowOf(app)[1].texts[0].text;
    };
    EXPECT_EQ(initials("微信读书"), "微信");
    EXPECT_EQ(initials("Q"), "Q");
    EXPECT_EQ(initials(""), "");
}

TEST(AppRow, NamesThatAreCutStandWholeInTheHelp)
{
    AppEntry app = editor();
    app.appName = std::string(46, 'W'); // 276 of the 278 points
    EXPECT_EQ(rowOf(app)[0].help, "");
    app.appName = std::string(47, 'W');
    EXPECT_EQ(rowOf(app)[0].help, app.appName + "\norg.example.editor");
    app.appName = "Editor";
    app.bundleId = std::string(47, 'w');
    EXPECT_EQ(rowOf(app)[0].help, "Editor\n" + app.bundleId);
}

TEST(AppRow, ALongLabelLeavesRoomForTheName)
{
    AppEntry app = editor();
    app.categoryLabel = std::string(100, 'l');
    const auto marks = rowOf(app);
    EXPECT_EQ(marks[0].texts[0].place.width, 140);
    EXPECT_EQ(marks[0].texts[1].place.width, 174);
}

TEST(CategoryRow, IsAButtonWithDotLabelAndDivider)
{
    const auto marks = categoryRowMarks({"游戏", 10}, editor(), {360, 43});
    ASSERT_THAT(marks, SizeIs(3));
    const Mark row{.shape = Box{{0, 0, 360, 42}},
        .texts
        = {{.place = {42, 12.25, 284, 17.5}, .text = "游戏", .face = {TextFamily::system, 14}}},
        .role = MarkRole::button,
        .name = "游戏"};
    EXPECT_EQ(marks[0], row);
    EXPECT_EQ(marks[1].shape, (Shape{Circle{{26, 21}, 6}}));
    EXPECT_EQ(marks[1].fills, std::vector{Tint{colorFromHex("#14B8A6")}});
    EXPECT_EQ(marks[2], lineMark({20, 42.5}, {360, 42.5}, {InterfaceColor::separator}));
}

TEST(CategoryRow, ThePresentOneBearsACheckMark)
{
    const Mark row = categoryRowMarks({"办公套件", 6}, editor(), {360, 43})[0];
    EXPECT_EQ(row.value, "checked");
    EXPECT_EQ(row.symbols, std::vector{(SymbolMark{{326, 14, 14, 14}, "checkmark", kAccent})});
}

TEST(CategoryRow, WhatIsNotInTheTableIsGreyAndUnmarked)
{
    AppEntry app = editor();
    app.categoryKey = "homework";
    const auto marks = categoryRowMarks({"?", 99}, app, {360, 43});
    EXPECT_EQ(marks[0].value, "");
    EXPECT_EQ(marks[1].fills, std::vector{Tint{colorFromHex("#9CA3AF")}});
}

TEST(CurrentCategory, IsADotAndALine)
{
    const auto marks = currentCategoryMarks(editor(), {360, 38});
    ASSERT_THAT(marks, SizeIs(2));
    EXPECT_EQ(marks[0].shape, (Shape{Circle{{25, 19}, 5}}));
    EXPECT_EQ(marks[0].fills, std::vector{Tint{colorFromHex("#F97316")}});
    EXPECT_EQ(marks[1],
        textMark({.place = {38, 0, 302, 38},
            .text = "当前：office",
            .face = {TextFamily::system, 12},
            .tint = secondaryTint()}));
    EXPECT_EQ(pickerTitle(editor()), "「Editor」的分类");
}

} // namespace
} // namespace quillbrook
