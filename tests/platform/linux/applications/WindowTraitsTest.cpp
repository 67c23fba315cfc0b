#include "platform/linux/applications/WindowTraits.h"

#include "platform/linux/x11/XkbLayout.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quillbrook {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

WindowTraits traitsIn(std::string_view wmClass)
{
    WindowTraits traits;
    readWmClass(wmClass, traits);
    return traits;
}

TEST(WmClass, HoldsInstanceAndClass)
{
    EXPECT_EQ(traitsIn("xterm\0XTerm\0"sv), (WindowTraits{"xterm", "XTerm"}));
    EXPECT_EQ(traitsIn("xterm\0XTerm"sv), (WindowTraits{"xterm", "XTerm"}));
    EXPECT_EQ(traitsIn("xterm"sv), (WindowTraits{"xterm", ""}));
    EXPECT_EQ(traitsIn("\0XTerm\0"sv), (WindowTraits{"", "XTerm"}));
    EXPECT_EQ(traitsIn(""sv), WindowTraits{});
}

TEST(WmClass, KeepsLongNamesAndRepairsBytes)
{
    const std::string longName(4096, 'n');
    EXPECT_EQ(traitsIn("i\0"s + longName).className, longName);
    EXPECT_EQ(traitsIn("a\xff\0\xf0\x9f\x93\0"sv), (WindowTraits{"a\uFFFD", "\uFFFD\uFFFD\uFFFD"}));
}

TEST(WmClass, HasNoBlanksAtTheEnds)
{
    EXPECT_EQ(traitsIn("zoom\0zoom \0"sv), (WindowTraits{"zoom", "zoom"}));
    EXPECT_EQ(traitsIn(" \n\0\t\0"sv), WindowTraits{});
}

TEST(ClientMachine, IsOursByItsShortOrItsLongName)
{
    EXPECT_TRUE(isThisMachine("box", "box"));
    EXPECT_TRUE(isThisMachine("box.example.org", "box"));
    EXPECT_TRUE(isThisMachine("box", "box.example.org"));
    EXPECT_TRUE(isThisMachine("", "box"));
    EXPECT_FALSE(isThisMachine("boxer", "box"));
    EXPECT_FALSE(isThisMachine("server.example.org", "box"));
    EXPECT_FALSE(isThisMachine("box.example.net", "box.example.org"));
    EXPECT_FALSE(isThisMachine("other", ""));
}

TEST(PortalWindow, IsToldByAnyOfItsNames)
{
    EXPECT_TRUE(isPortal({.className = "Xdg-desktop-portal-gtk"}));
    EXPECT_TRUE(isPortal({.instance = "org.freedesktop.impl.portal.desktop.kde"}));
    EXPECT_TRUE(isPortal({.className = "Odd", .executable = "xdg-desktop-portal-gnome"}));
    EXPECT_FALSE(isPortal({.className = "Portal"}));
    EXPECT_FALSE(isPortal({}));
}

TEST(XkbIdentifier, IsThatOfTheGroup)
{
    constexpr auto kNames = "evdev\0pc105\0us,de,cn\0,dvorak,altgr-pinyin\0grp:x\0"sv;
    EXPECT_EQ(xkbIdentifier(kNames, 0), "xkb.keylayout.us");
    EXPECT_EQ(xkbIdentifier(kNames, 1), "xkb.keylayout.de.dvorak");
    EXPECT_EQ(xkbIdentifier(kNames, 2), "xkb.keylayout.cn.altgr-pinyin");
    EXPECT_EQ(xkbIdentifier(kNames, 3), std::nullopt);
}

TEST(XkbIdentifier, IsNoneWithoutNames)
{
    EXPECT_EQ(xkbIdentifier("", 0), std::nullopt);
    EXPECT_EQ(xkbIdentifier("evdev\0pc105\0"sv, 0), std::nullopt);
    EXPECT_EQ(xkbIdentifier("evdev\0pc105\0us"sv, 0), "xkb.keylayout.us");
    EXPECT_EQ(xkbIdentifier("evdev\0pc105\0us,\0\0\0"sv, 1), std::nullopt);
}

} // namespace
} // namespace quillbrook
