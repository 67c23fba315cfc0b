#include "platform/linux/proc/Processes.h"
#include "support/Bound.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

/// Another process that runs this program, until the end of the test.
class OtherProcess {
public:
    OtherProcess() : number(fork())
    {
        if (number == 0) {
            pause();
            _exit(0);
        }
    }

    ~OtherProcess()
    {
        kill(number, SIGKILL);
        waitpid(number, nullptr, 0);
    }

    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    pid_t id() const { return number; }

private:
    pid_t number;
};

TEST(Processes, TellWhichProgramTheyRun)
{
    const OtherProcess other;
    const std::string program = fs::read_symlink("/proc/self/exe").string();
    EXPECT_EQ(executableOf(other.id()), program);
    EXPECT_EQ(executableOf(getpid()), program);
    EXPECT_EQ(executableOf(0), "");
}

TEST(Processes, TellItToABoundProcessToo)
{
    if (!canRefuseWriting()) {
        GTEST_SKIP() << "the kernel has no Landlock";
    }
    const TemporaryDirectory directory;
    const OtherProcess other;
    const std::string link = "/proc/" + std::to_string(other.id()) + "/exe";
    EXPECT_EQ(inBoundChild(directory.path(),
                  [&] {
                      std::array<char, 8> begin{};
                      return readlink(link.c_str(), begin.data(), begin.size()) < 0 ? errno : 0;
                  }),
        EACCES);
    EXPECT_EQ(inBoundChild(directory.path(),
                  [&] { return executableOf(other.id()) == executableOf(getpid()) ? 0 : 1; }),
        0);
    // At least itself and the other, as more tests of this program may be under way.
    EXPECT_EQ(
        inBoundChild(directory.path(), [] { return instancesOfThisProgram() >= 2 ? 0 : 1; }), 0);
}

} // namespace
} // namespace quillbrook
