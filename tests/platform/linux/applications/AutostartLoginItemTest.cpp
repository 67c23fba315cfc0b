#include "platform/linux/applications/AutostartLoginItem.h"
#include "support/Bound.h"
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
    AutostartLoginItem item(const std::string& program = "/bin/sh") const
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

TEST_F(AutostartLoginItemTest, IsSwitchedByAProcessThatMayWriteInItsDataDirectoryAlone)
{
    const fs::path data = directory.path() / "data";
    fs::create_directory(data);
    if (!canRefuseWriting()) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    EXPECT_EQ(inBoundChild(data, [this] { return item().enable() ? 1 : 0; }), 0);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(inBoundChild(data, [this] { return item().disable() ? 1 : 0; }), 0);
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, EnablingWritesAnEntryThatStartsTheProgram)
{
    EXPECT_FALSE(item().enable());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(textOf("user"),
        "[Desktop Entry]\nType=Application\nName=Quillbrook\nExec=\"/bin/sh\"\n"
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
    write("etc", "Exec=sh\n");
    EXPECT_TRUE(item().isEnabled());
    EXPECT_FALSE(item().disable());
    EXPECT_FALSE(item().isEnabled());
    EXPECT_THAT(textOf("user"), HasSubstr("\nHidden=true\n"));
    EXPECT_FALSE(item().enable());
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnEntryThatTheDesktopPassesByIsOff)
{
    for (const char* keys : {"Exec=sh\nHidden=true\n", "Exec=sh\nX-GNOME-Autostart-enabled=false\n",
             "Name=Quillbrook\n", "Exec=\n"}) {
        write("user", keys);
        EXPECT_FALSE(item().isEnabled()) << keys;
    }
    write("user", "Exec=sh\nHidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, TheFirstEntryHidesThoseAfterIt)
{
    write("etc", "Exec=sh\n");
    write("site", "Exec=sh\nHidden=true\n");
    EXPECT_FALSE(item().isEnabled());
    write("user", "Exec=sh\n");
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnyPathIsOneArgument)
{
    const std::string program = (directory.path() / R"(my "50%" $apps\q`)").string();
    fs::copy_file("/bin/sh", program);
    EXPECT_FALSE(item(program).enable());
    EXPECT_THAT(textOf("user"),
        HasSubstr(R"(/my \\"50%%\\" \\$apps\\\\q\\`)"
                  "\"\n"));
    EXPECT_TRUE(item().isEnabled());
    fs::remove(program);
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, AnEntryWhoseProgramIsGoneIsOff)
{
    const fs::path program = directory.path() / "program";
    std::ofstream(program) << "#!/bin/sh\n";
    fs::permissions(program, fs::perms::owner_all);
    EXPECT_FALSE(item(program.string()).enable());
    EXPECT_TRUE(item().isEnabled());
    fs::permissions(program, fs::perms::owner_read);
    EXPECT_FALSE(item().isEnabled());
    fs::remove(program);
    EXPECT_FALSE(item().isEnabled());
    for (const char* keys : {"Exec=no-such-program\n", "Exec=env A=b /no/such/program\n",
             "Exec=sh\nTryExec=/no/such/program\n", "Exec=/bin\n"}) {
        write("user", keys);
        EXPECT_FALSE(item().isEnabled()) << keys;
    }
    write("user", "Exec=env A=b sh -c 'a b'\nTryExec=sh\n");
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
    write("etc", "Exec=sh\n");
    AutostartLoginItem own = AutostartLoginItem::ofThisUser("/bin/sh");
    EXPECT_TRUE(own.isEnabled());
    EXPECT_FALSE(own.disable());
    EXPECT_TRUE(fs::exists(entry("user")));

    setenv("XDG_CONFIG_HOME", "relative", 1);
    setenv("HOME", directory.path().c_str(), 1);
    EXPECT_FALSE(AutostartLoginItem::ofThisUser("/bin/sh").enable());
    EXPECT_TRUE(fs::exists(directory.path() / ".config" / "autostart"));
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("XDG_CONFIG_DIRS");
}

} // namespace
} // namespace quillbrook
