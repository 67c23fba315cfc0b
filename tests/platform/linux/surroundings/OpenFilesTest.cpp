#include "platform/linux/surroundings/OpenFiles.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cstdlib>

namespace quillbrook {
namespace {

/// What a process finds that may open `now` files and could have up to `most`, as its exit status.
void askWithLimits(rlim_t now, rlim_t most)
{
    const rlimit limits{.rlim_cur = now, .rlim_max = most};
    setrlimit(RLIMIT_NOFILE, &limits);
    std::_Exit(mayOpenEnoughFiles() ? 10 : 20);
}

TEST(OpenFiles, AreEnoughFromSixtyFourOn)
{
    EXPECT_EXIT(askWithLimits(64, 64), testing::ExitedWithCode(10), "^$");
    EXPECT_EXIT(
        askWithLimits(63, 63), testing::ExitedWithCode(20), "只允许打开 63 个文件，至少需要 64 个");
}

TEST(OpenFiles, ALimitThatMayBeRaisedIs)
{
    EXPECT_EXIT(askWithLimits(20, 64), testing::ExitedWithCode(10), "^$");
    EXPECT_EXIT(askWithLimits(20, 40), testing::ExitedWithCode(20), "只允许打开 40 个文件");
}

} // namespace
} // namespace quillbrook
