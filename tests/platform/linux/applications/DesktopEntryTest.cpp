#include "platform/linux/applications/DesktopEntry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::string> kChinese = {"zh_CN", "zh"};

TEST(LanguageKeys, GoFromTheCountryToTheLanguage)
{
    EXPECT_THAT(languageKeys("zh_CN.UTF-8"), ElementsAre("zh_CN", "zh"));
    EXPECT_THAT(languageKeys("sr_RS@latin"), ElementsAre("sr_RS", "sr"));
    EXPECT_THAT(languageKeys("de"), ElementsAre("de"));
    EXPECT_THAT(languageKeys("C.UTF-8"), IsEmpty());
    EXPECT_THAT(languageKeys("POSIX"), IsEmpty());
    EXPECT_THAT(languageKeys(""), IsEmpty());
    EXPECT_THAT(languageKeys("_CN"), ElementsAre("_CN"));
}

TEST(DesktopEntry, IsReadFromItsOwnGroup)
{
    const auto entry = parseDesktopEntry("# comment\n"
                                         "[Something]\nName=No\n"
                                         "[Desktop Entry]\n"
                                         "Type = Application\n"
                                         "Name=Files\n"
                                         "Name[zh_CN]=文件\n"
                                         "StartupWMClass=Nautilus\n"
                                         "Exec=/usr/bin/nautilus --new-window %U\n"
                                         "[Desktop Action new]\nName=New\nExec=other\n",
        kChinese);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "文件");
    EXPECT_EQ(entry->startupWmClass, "Nautilus");
    EXPECT_EQ(entry->executable, "nautilus");
    EXPECT_TRUE(entry->isShown);
}

TEST(DesktopEntry, TheNameIsTheNearestLanguages)
{
    const std::string text = "[Desktop Entry]\nType=Application\nName=Plain\nName[zh]=中\n"
                             "Name[zh_TW]=台\nName[de]=Deutsch\n";
    EXPECT_EQ(parseDesktopEntry(text, kChinese)->name, "中");
    EXPECT_EQ(parseDesktopEntry(text, {"fr"})->name, "Plain");
    EXPECT_EQ(parseDesktopEntry(text, {})->name, "Plain");
}

TEST(DesktopEntry, OthersThanApplicationsAreNone)
{
    EXPECT_FALSE(parseDesktopEntry("", {}));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nName=A\n", {}));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nName=A\n", {}));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Application\n", {}));
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Application\nName=A\nHidden=true\n", {}));
    EXPECT_FALSE(parseDesktopEntry("Type=Application\nName=A\n", {}));
}

TEST(DesktopEntry, NotShownIsAnApplicationAllTheSame)
{
    const auto entry
        = parseDesktopEntry("[Desktop Entry]\nType=Application\nName=A\nNoDisplay=true\n", {});
    ASSERT_TRUE(entry);
    EXPECT_FALSE(entry->isShown);
    EXPECT_EQ(entry->executable, "");
}

TEST(DesktopEntry, TheProgramIsLookedForBehindQuotesAndEnvironment)
{
    const auto executable = [](const std::string& exec) {
        return parseDesktopEntry("[Desktop Entry]\nType=Application\nName=A\nExec=" + exec, {})
            ->executable;
    };
    EXPECT_EQ(executable(R"("/opt/My App/bin/my app" %F)"), "my app");
    EXPECT_EQ(executable("env LANG=C A=/b/c /usr/bin/thing --x"), "thing");
    EXPECT_EQ(executable("/usr/bin/env A=1"), "");
    EXPECT_EQ(executable("  spaced  "), "spaced");
    EXPECT_EQ(executable("\"unclosed"), "unclosed");
}

TEST(DesktopEntry, WindowsLinesAndEscapesAreRead)
{
    const auto entry
        = parseDesktopEntry("[Desktop Entry]\r\nType=Application\r\nName=A\\sB\\\\C\\\r\n", {});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "A B\\C\\");
}

TEST(DesktopEntry, BytesThatAreNoTextAreRepaired)
{
    const auto entry
        = parseDesktopEntry("[Desktop Entry]\nType=Application\nName=a\xff\xfe z\n", {});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "a\uFFFD\uFFFD z");
}

TEST(DesktopEntry, TheFirstOfEqualKeysCounts)
{
    EXPECT_EQ(
        parseDesktopEntry("[Desktop Entry]\nType=Application\nName=A\nName=B\n", {})->name, "A");
}

} // namespace
} // namespace quillbrook
