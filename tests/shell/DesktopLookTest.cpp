#include "shell/DesktopLook.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace quillbrook {
namespace {

TEST(DesktopLookTest, WhatQtSaysIsChineseAsLongAsTheLookStands)
{
    const auto button = [] { return QCoreApplication::translate("QPlatformTheme", "Save"); };
    {
        const DesktopLook look;
        EXPECT_EQ(button(), "保存");
    }
    EXPECT_EQ(button(), "Save");
}

} // namespace
} // namespace quillbrook
