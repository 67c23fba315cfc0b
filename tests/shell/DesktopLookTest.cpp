#include "shell/DesktopLook.h"
#include "pages/kit/Look.h"
#include "platform/virtual/VirtualAppearance.h"

#include <gtest/gtest.h>

#include <QApplication>

namespace quillbrook {
namespace {

TEST(DesktopLookTest, WhatQtSaysIsChineseAsLongAsTheLookStands)
{
    const auto button = [] { return QCoreApplication::translate("QPlatformTheme", "Save"); };
    {
        VirtualAppearance appearance;
        const DesktopLook look(appearance);
        EXPECT_EQ(button(), "保存");
    }
    EXPECT_EQ(button(), "Save");
}

TEST(DesktopLookTest, FollowsTheDesktopsWishes)
{
    const auto isDark = [] { return Look::isDark(QApplication::palette()); };
    VirtualAppearance appearance;
    {
        const DesktopLook look(appearance);
        EXPECT_FALSE(isDark());
        appearance.setWish({.isDark = true, .accent = Color{1, 2, 3}});
        EXPECT_TRUE(isDark());
        EXPECT_EQ(Look::accent(QApplication::palette()), QColor(1, 2, 3));
        appearance.setWish({});
        EXPECT_FALSE(isDark());
    }
    appearance.setWish({.isDark = true});
    EXPECT_FALSE(isDark()); // nobody looks any longer
}

TEST(DesktopLookTest, AsksWhetherWindowsMayBlendAsLongAsTheLookStands)
{
    VirtualAppearance appearance;
    appearance.setCanBlendWindows(false);
    {
        const DesktopLook look(appearance);
        EXPECT_FALSE(Look::canBlendWindows());
        appearance.setCanBlendWindows(true); // a compositor was started
        EXPECT_TRUE(Look::canBlendWindows());
        appearance.setCanBlendWindows(false);
    }
    EXPECT_TRUE(Look::canBlendWindows());
}

} // namespace
} // namespace quillbrook
