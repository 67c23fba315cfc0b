#include "platform/linux/applications/ApplicationIdentity.h"

#include "platform/linux/applications/DesktopEntries.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <fstream>
#include <string>

namespace quillbrook {
namespace {

class ApplicationIdentityTest : public testing::Test {
protected:
    void write(const std::string& id, const std::string& keys) const
    {
        std::ofstream(directory.path() / (id + ".desktop"), std::ios::binary)
            << "[Desktop Entry]\nType=Application\n"
            << keys;
    }

    void expect(const WindowTraits& traits, const std::string& name, const std::string& bundle)
    {
        const RunningApplication application = applicationOf(traits, entries);
        EXPECT_EQ(application.localizedName, name);
        EXPECT_EQ(application.bundleIdentifier, bundle);
    }

    TemporaryDirectory directory{};
    int count = 1;
    std::string name = "test";
    char* values[2] = {name.data(), nullptr};
    QCoreApplication application{count, values};
    DesktopEntries entries{{directory.path()}, {"zh_CN", "zh"}};
};

TEST_F(ApplicationIdentityTest, IsThatOfTheEntryElseTheClassElseTheProgram)
{
    write("firefox-esr", "Name=Firefox ESR\nName[zh_CN]=火狐\nStartupWMClass=firefox-esr\n");
    write("org.example.Tool", "Name=Tool\n");
    expect({.instance = "Navigator", .className = "firefox-esr"}, "火狐", "org.mozilla.firefox");
    expect({.className = "Tool"}, "Tool", "org.example.Tool");
    expect({.instance = "vlc", .className = "vlc"}, "vlc", "com.videolan.vlc");
    expect({.instance = "i", .className = "Odd"}, "Odd", "Odd");
    expect({.executable = "konsole-like"}, "konsole-like", "konsole-like");
    expect({.executable = "xterm"}, "xterm", "com.apple.Terminal.xterm");
    expect({.instance = "quillbrook", .className = "Quillbrook"}, "Quillbrook",
        "cn.tarnlow.quillbrook");
    expect({}, "未知应用", "unknown");
}

TEST_F(ApplicationIdentityTest, AWebApplicationIsNotItsBrowser)
{
    write("google-chrome", "Name=Google Chrome\nStartupWMClass=Google-chrome\n");
    write("chrome-abc-Default", "Name=Mail on the Web\nStartupWMClass=crx_abc\n");
    expect({.instance = "crx_abc", .className = "Google-chrome"}, "Mail on the Web",
        "chrome-abc-Default");
    expect({.instance = "google-chrome", .className = "Google-chrome"}, "Google Chrome",
        "com.google.Chrome");
    expect({.instance = "crx_unheard", .className = "Google-chrome"}, "Google Chrome",
        "com.google.Chrome");
}

TEST_F(ApplicationIdentityTest, TheClassIsKnownWhateverItsEntryIsCalled)
{
    write("my-browser", "Name=Browser\nStartupWMClass=firefox\n");
    expect({.instance = "Navigator", .className = "firefox"}, "Browser", "org.mozilla.firefox");
}

TEST_F(ApplicationIdentityTest, AnEntryThatWasFoundCountsMoreThanTheProgram)
{
    write("org.example.Notes", "Name=Notes\nStartupWMClass=Notes\n");
    expect({.instance = "notes", .className = "Notes", .executable = "chromium"}, "Notes",
        "org.example.Notes");
}

TEST_F(ApplicationIdentityTest, GamesAndVersionsAreKnownByTheirBeginning)
{
    expect({.instance = "steam_app_570", .className = "steam_app_570"}, "steam_app_570",
        "com.valvesoftware.steam.app.570");
    expect({.className = "Minecraft* 1.20.1"}, "Minecraft* 1.20.1", "com.mojang.minecraft");
    expect({.className = "Minecraft 1.21"}, "Minecraft 1.21", "com.mojang.minecraft");
}

TEST_F(ApplicationIdentityTest, NamesAreFitForTheStoreAndTheLog)
{
    write("org.example.Odd", "Name=Odd\x0b\x1b[1mname\nStartupWMClass=odd\n");
    expect({.className = "odd"}, "Odd  [1mname", "org.example.Odd");
    expect({.instance = "real", .className = "\n"}, "real", "real");
    const std::string longName(201, 'n');
    expect({.className = longName}, longName.substr(1), longName.substr(1));
    expect({.executable = "two\nlines"}, "two lines", "two lines");
}

} // namespace
} // namespace quillbrook
