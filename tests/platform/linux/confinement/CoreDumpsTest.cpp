#include "platform/linux/confinement/CoreDumps.h"
#include "support/InChild.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace quillbrook {
namespace {

TEST(CoreDumps, AreNotMadeOfAProcessThatForbadeThem)
{
    const TemporaryDirectory directory;
    const int status = statusInChild([&] {
        if (chdir(directory.path().c_str()) != 0) {
            return 1;
        }
        rlimit limit{};
        getrlimit(RLIMIT_CORE, &limit);
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_CORE, &limit);
        forbidCoreDumps();
        std::signal(SIGABRT, SIG_DFL);
        raise(SIGABRT);
        return 2;
    });
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGABRT);
    EXPECT_FALSE(WCOREDUMP(status));
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(CoreDumps, AreForbiddenForGoodAlsoToACrashServiceAndLeaveTheProcessVisible)
{
    EXPECT_EQ(inChild([] {
        forbidCoreDumps();
        rlimit limit{};
        getrlimit(RLIMIT_CORE, &limit);
        const bool isMarked = limit.rlim_cur == 1 && limit.rlim_max == 1;
        return isMarked && prctl(PR_GET_DUMPABLE) == 1 ? 0 : 1;
    }),
        0);
}

} // namespace
} // namespace quillbrook
