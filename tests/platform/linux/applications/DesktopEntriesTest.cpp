#include "platform/linux/applications/DesktopEntries.h"
#include "support/BecomesTrue.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

/// Two directories of desktop entries, the user's and the system's.
class DesktopEntriesTest : public testing::Test {
protected:
    DesktopEntriesTest()
    {
        fs::create_directories(user);
        fs::create_directories(system);
    }

    static void write(const fs::path& path, const std::string& keys)
    {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << "[Desktop Entry]\nType=Application\n" << keys;
    }

    std::string idOf(const WindowTraits& traits)
    {
        const DesktopEntry* entry = entries.find(traits);
        return entry != nullptr ? entry->id : "";
    }

    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    TemporaryDirectory directory{};
    fs::path user = directory.path() / "user";
    fs::path system = directory.path() / "system";
    DesktopEntries entries{{user, system}, {"zh_CN", "zh"}};
};

TEST_F(DesktopEntriesTest, WhatTheWindowSaysOfItsEntryComesFirst)
{
    write(system / "org.gnome.gedit.desktop", "Name=gedit\n");
    write(system / "other.desktop", "Name=Other\nStartupWMClass=Gedit\n");
    write(system / "kate.desktop", "Name=Kate\n");
    EXPECT_EQ(idOf({.className = "Gedit", .applicationId = "org.gnome.gedit"}), "org.gnome.gedit");
    EXPECT_EQ(
        idOf({.className = "Gedit", .applicationId = "org.gnome.gedit", .kdeDesktopFile = "kate"}),
        "kate");
    EXPECT_EQ(idOf({.className = "Gedit", .applicationId = "org.libreoffice"}), "other");
}

TEST_F(DesktopEntriesTest, TheClassIsSoughtAmongClassesThenIds)
{
    write(system / "debian-xterm.desktop", "Name=XTerm\nStartupWMClass=XTerm\n");
    write(system / "featherpad.desktop", "Name=FeatherPad\n");
    EXPECT_EQ(idOf({.instance = "xterm", .className = "XTerm"}), "debian-xterm");
    EXPECT_EQ(idOf({.instance = "featherpad", .className = "FeatherPad"}), "featherpad");
    EXPECT_EQ(idOf({.instance = "featherpad", .className = "Odd"}), "featherpad");
    EXPECT_EQ(idOf({.className = "Unheard"}), "");
    EXPECT_EQ(idOf({}), "");
}

TEST_F(DesktopEntriesTest, TheNameOfASandboxComesAfterTheClassAndBeforeLikeness)
{
    write(system / "org.mozilla.firefox.desktop", "Name=Firefox\n");
    write(system / "firefox_firefox.desktop", "Name=Snap\n");
    EXPECT_EQ(idOf({.className = "firefox", .sandboxId = "firefox_firefox"}), "firefox_firefox");
    EXPECT_EQ(idOf({.className = "firefox", .sandboxId = "none"}), "org.mozilla.firefox");
    EXPECT_EQ(idOf({.className = "org.mozilla.firefox", .sandboxId = "firefox_firefox"}),
        "org.mozilla.firefox");
}

TEST_F(DesktopEntriesTest, AProgramInTheShellOfAnotherIsItself)
{
    write(system / "chromium.desktop", "Name=Chromium\nExec=/usr/bin/chromium %U\n");
    write(system / "electron.desktop", "Name=Electron\nNoDisplay=true\n");
    write(system / "chrome-abc-Default.desktop", "Name=Mail\nExec=/usr/bin/chromium --app-id=a\n");
    write(system / "notes.desktop", "Name=Notes\nExec=/opt/Notes/notes %U\n");
    EXPECT_EQ(idOf({.className = "chrome-abc-Default", .applicationId = "chrome-abc-Default"}),
        "chrome-abc-Default");
    EXPECT_EQ(idOf({.className = "", .executable = "notes"}), "notes");
}

TEST_F(DesktopEntriesTest, TheLastPartAndTheProgramCountWhenThereIsButOne)
{
    write(system / "org.kde.konsole.desktop", "Name=Konsole\nExec=konsole\n");
    write(system / "org.a.tool.desktop", "Name=A\nExec=/opt/a/run\n");
    write(system / "org.b.tool.desktop", "Name=B\nExec=/opt/b/run\n");
    write(system / "org.c.single.desktop", "Name=C\nExec=prog\n");
    write(system / "hidden-prog.desktop", "Name=D\nExec=prog\nNoDisplay=true\n");
    EXPECT_EQ(idOf({.className = "Konsole"}), "org.kde.konsole");
    EXPECT_EQ(idOf({.className = "tool"}), "");
    EXPECT_EQ(idOf({.executable = "run"}), "");
    EXPECT_EQ(idOf({.executable = "prog"}), "org.c.single");
    write(system / "script.desktop", "Name=Script\nExec=python3.11 /opt/script.py\n");
    EXPECT_EQ(idOf({.executable = "python3.11"}), "");
}

TEST_F(DesktopEntriesTest, TheUsersEntryWinsAndMayHide)
{
    write(system / "a.desktop", "Name=System A\nStartupWMClass=A\n");
    write(user / "a.desktop", "Name=User A\nStartupWMClass=A\n");
    write(system / "b.desktop", "Name=B\nStartupWMClass=B\n");
    write(user / "b.desktop", "Name=B\nHidden=true\n");
    EXPECT_EQ(entries.find({.className = "A"})->name, "User A");
    EXPECT_EQ(idOf({.className = "B"}), "");
}

TEST_F(DesktopEntriesTest, FoldersArePartOfTheId)
{
    write(system / "kde" / "old.desktop", "Name=Old\n");
    EXPECT_EQ(idOf({.kdeDesktopFile = "kde-old"}), "kde-old");
}

TEST_F(DesktopEntriesTest, CirclesPipesHugeAndBinaryFilesAreSurvived)
{
    fs::create_directory_symlink(system, system / "loop");
    fs::create_symlink(system / "gone", system / "dangling.desktop");
    fs::create_symlink(system / "self.desktop", system / "self.desktop");
    ASSERT_EQ(mkfifo((system / "pipe.desktop").c_str(), 0600), 0);
    fs::create_directory(system / "folder.desktop");
    write(system / "huge.desktop",
        "Name=Huge\nStartupWMClass=Huge\n" + std::string(8 << 20, 'x') + "\n");
    std::string binary;
    for (int i = 0; i < 65536; ++i) {
        binary += static_cast<char>(i * 7919 >> 3);
    }
    std::ofstream(system / "binary.desktop", std::ios::binary) << binary;
    write(system / "z.desktop", "Name=Z\n");
    EXPECT_EQ(idOf({.className = "Huge"}), "huge");
    EXPECT_EQ(idOf({.className = "Z"}), "z");
}

TEST_F(DesktopEntriesTest, ANewEntryIsSeenWithoutARestart)
{
    EXPECT_EQ(idOf({.className = "Late"}), "");
    write(user / "late.desktop", "Name=Late\n");
    EXPECT_TRUE(becomesTrue([this] { return idOf({.className = "Late"}) == "late"; }));
}

TEST_F(DesktopEntriesTest, ADirectoryThatIsMadeLaterIsSeen)
{
    fs::remove_all(user);
    EXPECT_EQ(idOf({.className = "Late"}), "");
    write(user / "late.desktop", "Name=Late\n");
    EXPECT_TRUE(becomesTrue([this] { return idOf({.className = "Late"}) == "late"; }));
}

TEST(StandardDirectories, AreTheUsersThenTheSystems)
{
    setenv("XDG_DATA_HOME", "/home/x/data", 1);
    setenv("XDG_DATA_DIRS", "/a/share::/b/share", 1);
    EXPECT_EQ(DesktopEntries::standardDirectories(),
        (std::vector<fs::path>{
            "/home/x/data/applications", "/a/share/applications", "/b/share/applications"}));
    unsetenv("XDG_DATA_HOME");
    unsetenv("XDG_DATA_DIRS");
    setenv("HOME", "/home/y", 1);
    EXPECT_EQ(DesktopEntries::standardDirectories(),
        (std::vector<fs::path>{"/home/y/.local/share/applications", "/usr/local/share/applications",
            "/usr/share/applications"}));
}

} // namespace
} // namespace quillbrook
