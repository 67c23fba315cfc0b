#include "platform/linux/applications/Sandbox.h"

#include "support/Bound.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

namespace quillbrook {
namespace {

TEST(Sandbox, AFlatpakSaysItsName)
{
    EXPECT_EQ(flatpakIdIn("[Application]\nname=org.mozilla.firefox\nruntime=runtime/x\n"),
        "org.mozilla.firefox");
    EXPECT_EQ(flatpakIdIn("[Context]\nname=other\n[Application]\nname=a.b"), "a.b");
    EXPECT_EQ(flatpakIdIn("[Runtime]\nname=org.gnome.Platform\n"), "");
    EXPECT_EQ(flatpakIdIn(""), "");
    EXPECT_EQ(flatpakIdIn("[Application]\nname=a\xFF\n"), "a\uFFFD");
}

TEST(Sandbox, ASnapIsInAGroupOfItsName)
{
    EXPECT_EQ(snapIdIn("0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
                       "snap.firefox.firefox-6f1e2d3c-1111-2222-3333-444455556666.scope\n"),
        "firefox_firefox");
    EXPECT_EQ(snapIdIn("0::/user.slice/snap.gnome-calculator.gnome-calculator-4711.scope"),
        "gnome-calculator_gnome-calculator");
    EXPECT_EQ(snapIdIn("12:pids:/x\n1:name=systemd:/snap.code.url-handler.service\n"),
        "code_url-handler");
    EXPECT_EQ(snapIdIn("0::/user.slice/app-foot.scope\n"), "");
    EXPECT_EQ(snapIdIn("0::/snap.broken"), "");
    EXPECT_EQ(snapIdIn(""), "");
}

TEST(Sandbox, OrdinaryProcessesAreInNone)
{
    EXPECT_EQ(sandboxIdOf(getpid()), "");
    EXPECT_EQ(sandboxIdOf(0), "");
}

TEST(Sandbox, IsFoundOutByABoundProcess)
{
    const TemporaryDirectory root;
    std::ofstream(root.path() / ".flatpak-info") << "[Application]\nname=org.example.Paint\n";
    const pid_t other = fork();
    if (other == 0) {
        if (chroot(root.path().c_str()) != 0) {
            unshare(CLONE_NEWUSER);
            [[maybe_unused]] const int again = chroot(root.path().c_str());
        }
        raise(SIGSTOP);
        _exit(0);
    }
    waitpid(other, nullptr, WUNTRACED);
    const bool isElsewhere = sandboxIdOf(other) == "org.example.Paint";
    const int found = inBoundChild(
        root.path(), [&] { return sandboxIdOf(other) == "org.example.Paint" ? 0 : 1; });
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
    if (!isElsewhere || !canRefuseWriting()) {
        GTEST_SKIP() << "no other root can be had here, or the kernel has no Landlock";
    }
    EXPECT_EQ(found, 0);
}

} // namespace
} // namespace quillbrook
