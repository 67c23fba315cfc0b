#include "platform/linux/AutostartLoginItem.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

class AutostartLoginItemTest : public testing::Test {
protected:
    AutostartLoginItem item(const std::string& program = "/usr/bin/quillbrook") const
    {
        return {directory.path() / "user", {directory.path() / "site", directory.path() / "etc"},
            program};
    }

    fs::path entry(const std::string& folder) const
    {
        return directory.path() / folder / "autostart" / "cn.tarnlow.quillbrook.desktop";
    }

    void write(const std::string& folder, const std::string& keys) const
    {
        fs::create_directories(entry(folder).parent_path());
        std::ofstream(entry(folder)) << "[Desktop Entry]\nType=Application\n" << keys;
    }

    std::string textOf(const std::string& folder) const
    {
        std::ifstream stream(entry(folder));
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    TemporaryDirectory directory{};
};

TEST_F(AutostartLoginItemTest, IsOffWithoutAnEntry)
{
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, EnablingWritesAnEntryThatStartsTheProgram)
{
    EXPECT_FALSE(item().enable());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(textOf("user"),
        "[Desktop Entry]\nType=Application\nName=Quillbrook\nExec=\"/usr/bin/quillbrook\"\n"
        "Icon=cn.tarnlow.quillbrook\n");
}

TEST_F(AutostartLoginItemTest, DisablingRemovesTheUsersEntry)
{
    EXPECT_FALSE(item().enable());
    EXPECT_FALSE(item().disable());
    EXPECT_FALSE(item().isEnabled());
    EXPECT_FALSE(fs::exists(entry("user")));
    EXPECT_FALSE(item().disable());
}

TEST_F(AutostartLoginItemTest, DisablingHidesTheSystemsEntry)
{
    write("etc", "Exec=quillbrook\n");
    EXPECT_TRUE(item().isEnabled());
    EXPECT_FALSE(item().disable());
    EXPECT_FALSE(item().isEnabled());
    EXPECT_THAT(textOf("user"), HasSubstr("\nHidden=true\n"));
    EXPECT_FALSE(item().enable());
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnEntryThatTheDesktopPassesByIsOff)
{
    for (const char* keys :
        {"Exec=quillbrook\nHidden=true\n", "Exec=quillbrook\nX-GNOME-Autostart-enabled=false\n",
            "Name=Quillbrook\n", "Exec=\n"}) {
        write("user", keys);
        EXPECT_FALSE(item().isEnabled()) << keys;
    }
    write("user", "Exec=quillbrook\nHidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, TheFirstEntryHidesThoseAfterIt)
{
    write("etc", "Exec=quillbrook\n");
    write("site", "Exec=quillbrook\nHidden=true\n");
    EXPECT_FALSE(item().isEnabled());
    write("user", "Exec=quillbrook\n");
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnyPathIsOneArgument)
{
    EXPECT_FALSE(item(R"(/opt/my "50%" $apps\q`)").enable());
    EXPECT_THAT(textOf("user"),
        HasSubstr("\nExec=\""
                  R"(/opt/my \\"50%%\\" \\$apps\\\\q\\`)"
                  "\"\n"));
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, APathOfSeveralLinesIsRefused)
{
    EXPECT_TRUE(item("/opt/a\nHidden=true").enable());
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, WhatIsInTheWayIsAFailureInWords)
{
    std::ofstream(directory.path() / "user") << "a file";
    const auto failure = item().enable();
    ASSERT_TRUE(failure);
    EXPECT_THAT(failure->description, HasSubstr("user/autostart: "));

    fs::remove(directory.path() / "user");
    fs::create_directories(entry("user") / "full");
    EXPECT_TRUE(item().enable());
    EXPECT_TRUE(item().disable());
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, TheUsersFolderFollowsTheEnvironment)
{
    setenv("XDG_CONFIG_HOME", (directory.path() / "user").c_str(), 1);
    setenv("XDG_CONFIG_DIRS", (directory.path() / "etc").c_str(), 1);
    write("etc", "Exec=quillbrook\n");
    AutostartLoginItem own = AutostartLoginItem::ofThisUser("/usr/bin/quillbrook");
    EXPECT_TRUE(own.isEnabled());
    EXPECT_FALSE(own.disable());
    EXPECT_TRUE(fs::exists(entry("user")));

    setenv("XDG_CONFIG_HOME", "relative", 1);
    setenv("HOME", directory.path().c_str(), 1);
    EXPECT_FALSE(AutostartLoginItem::ofThisUser("/usr/bin/quillbrook").enable());
    EXPECT_TRUE(fs::exists(directory.path() / ".config" / "autostart"));
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("XDG_CONFIG_DIRS");
}

} // namespace
} // namespace quillbrook
