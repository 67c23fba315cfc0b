#include "platform/linux/appearance/KdeColors.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(KdeColors, AreDarkWhenTheBackgroundOfWindowsIs)
{
    EXPECT_EQ(kdeAppearanceIn("[Colors:View]\nBackgroundNormal=27,30,32\n\n"
                              "[Colors:Window]\nBackgroundAlternate=1,2,3\n"
                              "BackgroundNormal=239,240,241\n"),
        Appearance{.isDark = false});
    EXPECT_EQ(kdeAppearanceIn("[Colors:Window]\r\nBackgroundNormal=42,46,50\r\n"),
        Appearance{.isDark = true});
    EXPECT_EQ(kdeAppearanceIn("[Colors:Window]\nBackgroundNormal=128,128,128"),
        Appearance{.isDark = false});
    EXPECT_EQ(kdeAppearanceIn("[Colors:Window]\nBackgroundNormal=127,127,127"),
        Appearance{.isDark = true});
    EXPECT_EQ(kdeAppearanceIn("[Colors:Window]\nBackgroundNormal=0,0,255,200"),
        Appearance{.isDark = true});
}

TEST(KdeColors, TellTheAccent)
{
    EXPECT_EQ(kdeAppearanceIn("[General]\nColorScheme=BreezeLight\nAccentColor=61,212,37\n"),
        (Appearance{.accent = Color{61, 212, 37}}));
}

TEST(KdeColors, TellNothingWhereNothingIsWrittenRightly)
{
    for (const char* text : {"", "[Colors:Window]", "BackgroundNormal=1,1,1",
             "[Colors:Window]\nBackgroundNormal=", "[Colors:Window]\nBackgroundNormal=1,1",
             "[Colors:Window]\nBackgroundNormal=1,1,256",
             "[Colors:Window]\nBackgroundNormal=1,1,1x", "[Colors:Window]\nBackgroundNormal=1;1;1",
             "[Colors:Window]\nBackgroundNormal=-1,1,1", "[Other]\nAccentColor=1,1,1", "=\n[\n="}) {
        EXPECT_EQ(kdeAppearanceIn(text), Appearance{}) << text;
    }
}

} // namespace
} // namespace quillbrook
