#include "platform/linux/bus/InputMethodNames.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(FcitxIdentifier, OfKeyboardsIsThatOfTheLayout)
{
    EXPECT_EQ(fcitxIdentifier("keyboard-us", "English (US)", "English"), "xkb.keylayout.us");
    EXPECT_EQ(fcitxIdentifier("keyboard-us-dvorak", "", ""), "xkb.keylayout.us.dvorak");
    EXPECT_EQ(fcitxIdentifier("keyboard-cn-altgr-pinyin", "", ""), "xkb.keylayout.cn.altgr-pinyin");
}

TEST(FcitxIdentifier, OfOthersHoldsTheNames)
{
    EXPECT_EQ(fcitxIdentifier("wbx", "Wubi", "五笔字型"), "fcitx5.wbx.Wubi.五笔字型");
    EXPECT_EQ(fcitxIdentifier("pinyin", "", ""), "fcitx5.pinyin..");
}

TEST(IbusIdentifier, OfKeyboardsIsThatOfTheLayout)
{
    EXPECT_EQ(ibusIdentifier("xkb:us::eng"), "xkb.keylayout.us");
    EXPECT_EQ(ibusIdentifier("xkb:us:dvorak:eng"), "xkb.keylayout.us.dvorak");
    EXPECT_EQ(ibusIdentifier("xkb:us"), "xkb.keylayout.us");
}

TEST(IbusIdentifier, OfOthersIsTheEngines)
{
    EXPECT_EQ(ibusIdentifier("libpinyin"), "ibus.libpinyin");
    EXPECT_EQ(ibusIdentifier("table:wubi-jidian86"), "ibus.table:wubi-jidian86");
}

TEST(DoublePinyin, IsTheNameOfSomeSchemas)
{
    EXPECT_TRUE(isDoublePinyinSchema("double_pinyin_flypy"));
    EXPECT_TRUE(isDoublePinyinSchema("my_flypy"));
    EXPECT_FALSE(isDoublePinyinSchema("luna_pinyin"));
    EXPECT_FALSE(isDoublePinyinSchema(""));
}

TEST(IbusAddress, StandsInALineOfItsOwn)
{
    EXPECT_EQ(ibusAddressIn("# c\nIBUS_ADDRESS=unix:abstract=/x,guid=1\nIBUS_DAEMON_PID=5\n"),
        "unix:abstract=/x,guid=1");
    EXPECT_EQ(ibusAddressIn("XIBUS_ADDRESS=no\nIBUS_ADDRESS=\n"), std::nullopt);
    EXPECT_EQ(ibusAddressIn(""), std::nullopt);
}

} // namespace
} // namespace quillbrook
