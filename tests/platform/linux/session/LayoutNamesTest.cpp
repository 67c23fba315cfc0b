#include "platform/linux/session/LayoutNames.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

constexpr const char* kRules = R"(! model
  pc104           Generic 104-key PC

! layout
  us              English (US)
  cn              Chinese

! variant
  dvorak          us: English (Dvorak)
  altgr-pinyin    cn: Hanyu Pinyin (with AltGr dead keys)

! option
  grp             Switching to another layout
)";

TEST(LayoutNames, FindsLayoutsAndVariants)
{
    EXPECT_EQ(layoutIdentifierOf("English (US)", kRules), "xkb.keylayout.us");
    EXPECT_EQ(layoutIdentifierOf("Chinese", kRules), "xkb.keylayout.cn");
    EXPECT_EQ(layoutIdentifierOf("English (Dvorak)", kRules), "xkb.keylayout.us.dvorak");
    EXPECT_EQ(layoutIdentifierOf("Hanyu Pinyin (with AltGr dead keys)", kRules),
        "xkb.keylayout.cn.altgr-pinyin");
}

TEST(LayoutNames, WhatIsNotInTheListKeepsItsDescription)
{
    EXPECT_EQ(layoutIdentifierOf("Mine", kRules), "xkb.keylayout.Mine");
    EXPECT_EQ(layoutIdentifierOf("English (US)", ""), "xkb.keylayout.English (US)");
    EXPECT_EQ(layoutIdentifierOf("Generic 104-key PC", kRules),
        "xkb.keylayout.Generic 104-key PC"); // a model's name is no layout's
}

} // namespace
} // namespace quillbrook
