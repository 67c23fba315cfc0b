#include "platform/linux/session/SessionFront.h"

#include "platform/linux/applications/DesktopEntries.h"
#include "support/TemporaryDirectory.h"

#include <QCoreApplication>

#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace quillbrook {
namespace {

/// A desktop that says what a test lets it say.
struct SaidFront final : FrontSource {
    bool isThere() const override { return there; }
    std::optional<FrontWindow> front() const override { return window; }

    bool there = true;
    std::optional<FrontWindow> window{};
};

class SessionFrontTest : public testing::Test {
protected:
    SessionFrontTest()
    {
        std::ofstream(directory.path() / "org.example.Editor.desktop")
            << "[Desktop Entry]\nType=Application\nName=Editor\nExec=/opt/bin/edit\n";
        front.add(first);
        front.add(second);
        second.there = false;
    }

    void show(SaidFront& source, const std::string& appId)
    {
        source.window = FrontWindow{.traits = {.className = appId, .applicationId = appId}};
        front.sourceChanged();
    }

    void showNothing(SaidFront& source)
    {
        source.window.reset();
        front.sourceChanged();
    }

    std::string name()
    {
        const auto application = front.current();
        return application ? application->localizedName.value_or("?") : "none";
    }

    int count = 1;
    std::string programName = "test";
    char* values[2] = {programName.data(), nullptr};
    QCoreApplication application{count, values};
    TemporaryDirectory directory{};
    DesktopEntries entries{{directory.path()}, {}};
    double time = 50;
    SaidFront first{};
    SaidFront second{};
    SessionFront front{entries, [this] { return time; }};
};

TEST_F(SessionFrontTest, NothingKnownIsNobodyAndNotTheDesktop)
{
    EXPECT_EQ(name(), "none");
    time += 100;
    EXPECT_EQ(name(), "none");
}

TEST_F(SessionFrontTest, NamesTheApplicationByItsEntry)
{
    show(first, "org.example.Editor");
    EXPECT_EQ(name(), "Editor");
    EXPECT_EQ(front.current()->bundleIdentifier, "org.example.Editor");
    show(first, "Unheard");
    EXPECT_EQ(name(), "Unheard");
}

TEST_F(SessionFrontTest, AGapBetweenWindowsIsBridgedForHalfASecond)
{
    show(first, "org.example.Editor");
    showNothing(first);
    time += 0.49;
    EXPECT_EQ(name(), "Editor");
    time += 0.01;
    EXPECT_EQ(name(), "none");
    show(first, "Unheard");
    EXPECT_EQ(name(), "Unheard");
}

TEST_F(SessionFrontTest, RepeatedSilenceIsOneGap)
{
    show(first, "org.example.Editor");
    for (int i = 0; i < 10; ++i) {
        showNothing(first);
        time += 0.1;
    }
    EXPECT_EQ(name(), "none");
}

TEST_F(SessionFrontTest, ADeadSourceLeavesNobodyInFront)
{
    show(first, "org.example.Editor");
    first.there = false;
    front.sourceChanged();
    EXPECT_FALSE(front.isKnown());
    time += 1;
    EXPECT_EQ(name(), "none");
}

TEST_F(SessionFrontTest, TheNextSourceIsHeardWhenTheFirstIsGone)
{
    second.there = true;
    second.window = FrontWindow{.traits = {.className = "Second"}};
    show(first, "org.example.Editor");
    EXPECT_EQ(name(), "Editor");
    first.there = false;
    front.sourceChanged();
    EXPECT_EQ(name(), "Second");
}

TEST_F(SessionFrontTest, AWindowThatTellsNothingIsItsProgram)
{
    first.window = FrontWindow{.process = getpid()};
    front.sourceChanged();
    EXPECT_EQ(name(), std::filesystem::read_symlink("/proc/self/exe").filename().string());
}

TEST_F(SessionFrontTest, ADialogueOfAPortalServesWhoAskedForIt)
{
    show(first, "org.example.Editor");
    EXPECT_EQ(name(), "Editor");
    show(first, "xdg-desktop-portal-gtk");
    EXPECT_EQ(name(), "Editor");
}

TEST_F(SessionFrontTest, AnIdOfManyCharactersIsCutToAName)
{
    show(first, std::string(4096, 'x'));
    EXPECT_EQ(name(), std::string(200, 'x'));
}

} // namespace
} // namespace quillbrook
