#include "platform/linux/applications/Sandbox.h"

#include <gtest/gtest.h>

#include <unistd.h>

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

} // namespace
} // namespace quillbrook
