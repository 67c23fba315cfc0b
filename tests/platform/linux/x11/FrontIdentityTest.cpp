#include "platform/linux/proc/Processes.h"
#include "tests/platform/linux/x11/FrontFixture.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>

namespace quillbrook {
namespace {

/// A process that does nothing until the test is over.
class IdleProcess {
public:
    IdleProcess() : process(fork())
    {
        if (process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            execlp("sleep", "sleep", "1000", nullptr);
            _exit(127);
        }
    }
    ~IdleProcess()
    {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }

    IdleProcess(const IdleProcess&) = delete;
    IdleProcess& operator=(const IdleProcess&) = delete;

    std::uint32_t number() const { return static_cast<std::uint32_t>(process); }

private:
    pid_t process;
};

class FrontIdentityTest : public FrontFixture {
protected:
    FrontIdentityTest() { client.manage(); }

    xcb_window_t makeWindowFor(const std::string& className, xcb_window_t served)
    {
        const xcb_window_t window = client.makeWindow(className);
        client.setNumber(window, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW, served);
        return window;
    }

    xcb_window_t makeWindowOfProcess(std::uint32_t process)
    {
        const xcb_window_t window = client.makeBareWindow();
        client.setNumber(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, process);
        return window;
    }
};

TEST_F(FrontIdentityTest, ADialogueBelongsToTheWindowThatItServes)
{
    const xcb_window_t main = client.makeWindow("Editor");
    const xcb_window_t dialogue = makeWindowFor("Chooser", main);
    client.activate(makeWindowFor("Question", dialogue));
    EXPECT_TRUE(isInFront("Editor"));
}

TEST_F(FrontIdentityTest, ADialogueThatServesNobodyIsItsOwn)
{
    client.activate(makeWindowFor("OfTheRoot", client.root));
    EXPECT_TRUE(isInFront("OfTheRoot"));
    const xcb_window_t gone = client.makeWindow("Gone");
    client.destroy(gone);
    client.activate(makeWindowFor("OfTheGone", gone));
    EXPECT_TRUE(isInFront("OfTheGone"));
    client.activate(makeWindowFor("OfTheNameless", client.makeBareWindow()));
    EXPECT_TRUE(isInFront("OfTheNameless"));
}

TEST_F(FrontIdentityTest, WindowsThatServeEachOtherInACircleAreTheirOwn)
{
    const xcb_window_t one = client.makeWindow("One");
    const xcb_window_t two = makeWindowFor("Two", one);
    client.setNumber(one, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW, two);
    client.activate(two);
    EXPECT_TRUE(isInFront("Two"));
    client.activate(one);
    EXPECT_TRUE(isInFront("One"));
}

TEST_F(FrontIdentityTest, ThePortalsDialogueBelongsToTheApplicationThatItServes)
{
    const xcb_window_t main = client.makeWindow("Editor");
    client.activate(makeWindowFor("Xdg-desktop-portal-gtk", main));
    EXPECT_TRUE(isInFront("Editor"));
    bringToFront("Browser");
    client.activate(client.makeWindow("Xdg-desktop-portal-gtk"));
    runFor(700);
    EXPECT_EQ(frontName(), "Browser");
    bringToFront("Editor");
}

TEST_F(FrontIdentityTest, AClassThatChangesInFrontIsFollowed)
{
    const xcb_window_t window = client.makeWindow("libreoffice-startcenter");
    client.activate(window);
    ASSERT_TRUE(isInFront("libreoffice-startcenter"));
    client.setClass(window, "libreoffice", "libreoffice-writer");
    EXPECT_TRUE(isInFront("libreoffice-writer"));
    bringToFront("Other");
    client.setClass(window, "libreoffice", "libreoffice-calc");
    runFor(100);
    EXPECT_EQ(frontName(), "Other");
}

TEST_F(FrontIdentityTest, AWindowOfTheDesktopIsTheDesktop)
{
    const xcb_window_t window = client.makeWindow("Xfdesktop");
    client.setNumber(
        window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, client.atom("_NET_WM_WINDOW_TYPE_DESKTOP"));
    client.activate(window);
    EXPECT_TRUE(isInFront("桌面"));
    EXPECT_EQ(frontBundle(), "com.apple.finder");
    const xcb_window_t other = client.makeWindow("Thunar");
    client.setNumber(
        other, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, client.atom("_NET_WM_WINDOW_TYPE_NORMAL"));
    client.activate(other);
    EXPECT_TRUE(isInFront("Thunar"));
}

TEST_F(FrontIdentityTest, AWindowWithoutAClassIsItsPrograms)
{
    const xcb_window_t window = makeWindowOfProcess(static_cast<std::uint32_t>(getpid()));
    client.activate(window);
    EXPECT_TRUE(isInFront("platform_linux_x11_test"));
    client.setText(window, "WM_CLIENT_MACHINE", "elsewhere.example.org");
    EXPECT_TRUE(isInFront("未知应用"));
    std::array<char, 256> host{};
    ASSERT_EQ(gethostname(host.data(), host.size() - 1), 0);
    client.setText(window, "WM_CLIENT_MACHINE", host.data());
    EXPECT_TRUE(isInFront("platform_linux_x11_test"));
}

TEST_F(FrontIdentityTest, AProcessThatDoesNotShowTheWindowSaysNothing)
{
    // The number that a program has in a container is often that of a stranger outside.
    const IdleProcess stranger;
    client.activate(makeWindowOfProcess(stranger.number()));
    EXPECT_TRUE(isInFront("未知应用"));
}

TEST(ProcessNumber, IsTheOneInsideAContainer)
{
    EXPECT_TRUE(knowsItselfAs(getpid(), getpid()));
    EXPECT_FALSE(knowsItselfAs(getpid(), getppid()));

    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const pid_t outer = fork();
    if (outer == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (unshare(CLONE_NEWUSER | CLONE_NEWPID) != 0) {
            _exit(1);
        }
        const pid_t inner = fork();
        if (inner == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            pause();
            _exit(0);
        }
        _exit(write(ends[1], &inner, sizeof inner) == sizeof inner && pause() == -1 ? 0 : 1);
    }
    close(ends[1]);
    pid_t inner = 0;
    const bool isPossible = read(ends[0], &inner, sizeof inner) == sizeof inner;
    close(ends[0]);
    if (isPossible) {
        EXPECT_TRUE(knowsItselfAs(inner, 1));
        EXPECT_FALSE(knowsItselfAs(inner, inner));
        kill(inner, SIGKILL); // it may not have come to the wish to die with its parent
    }
    kill(outer, SIGKILL);
    waitpid(outer, nullptr, 0);
    if (!isPossible) {
        GTEST_SKIP() << "this system has no containers for users";
    }
}

} // namespace
} // namespace quillbrook
