#include "engine/LogFile.h"

#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::StartsWith;

class LogFileTest : public testing::Test {
protected:
    static std::string textOf(const fs::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// A line of so many bytes that begins with `mark`.
    static std::string line(const std::string& mark, std::size_t bytes = 1'000'000)
    {
        return mark + std::string(bytes - mark.size() - 1, '.') + "\n";
    }

    /// The marks of all lines that are left, in order: each line up to its first blank.
    std::vector<std::string> marks() const
    {
        std::vector<std::string> found;
        for (const fs::path& file : {older, path}) {
            std::ifstream stream(file);
            for (std::string text; std::getline(stream, text);) {
                found.push_back(text.substr(0, text.find('.')));
            }
        }
        return found;
    }

    TemporaryDirectory directory{};
    fs::path path = directory.path() / "monitor.log";
    fs::path older = directory.path() / "monitor.log.1";
    LogFile log{};
};

TEST_F(LogFileTest, TheLineThatWouldPassTheLimitBeginsAFreshFile)
{
    log.open(path);
    for (int i = 0; i < 8; ++i) {
        log.append(line(std::to_string(i)));
    }
    EXPECT_EQ(fs::file_size(path), std::uintmax_t{LogFile::kMostBytes});
    EXPECT_FALSE(fs::exists(older));
    log.append("8.\n");
    EXPECT_EQ(fs::file_size(older), std::uintmax_t{LogFile::kMostBytes});
    EXPECT_EQ(textOf(path), "8.\n");
    EXPECT_THAT(marks(), testing::ElementsAre("0", "1", "2", "3", "4", "5", "6", "7", "8"));
}

TEST_F(LogFileTest, OneOlderFileIsKept)
{
    log.open(path);
    for (int i = 0; i < 20; ++i) {
        log.append(line(std::to_string(i)));
    }
    EXPECT_THAT(textOf(older), StartsWith("8."));
    EXPECT_THAT(textOf(path), StartsWith("16."));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 2);
}

TEST_F(LogFileTest, ALineLongerThanTheLimitIsWrittenWhole)
{
    log.open(path);
    log.append(line("long", 9'000'000));
    EXPECT_FALSE(fs::exists(older));
    log.append("next.\n");
    EXPECT_THAT(marks(), testing::ElementsAre("long", "next"));
}

TEST_F(LogFileTest, AFileThatWasTooLargeAtTheStartIsTurnedOverFirst)
{
    std::ofstream(path) << line("old", 9'000'000);
    log.open(path);
    log.append("new.\n");
    EXPECT_THAT(textOf(older), StartsWith("old"));
    EXPECT_EQ(textOf(path), "new.\n");
}

TEST_F(LogFileTest, WhereNothingCanBeRenamedTheLinesGoOn)
{
    fs::create_directories(older / "inside");
    log.open(path);
    for (int i = 0; i < 10; ++i) {
        log.append(line(std::to_string(i)));
    }
    EXPECT_EQ(fs::file_size(path), 10'000'000U);
}

TEST_F(LogFileTest, WhereNoFreshFileCanBeMadeTheLinesGoOnInTheOlder)
{
    log.open(path);
    log.append(line("first", 8'000'000));
    const fs::path elsewhere = directory.path() / "elsewhere";
    fs::rename(path, elsewhere);
    fs::create_directory(path); // a folder is in the way of the fresh file
    log.append("second.\n");
    EXPECT_THAT(textOf(elsewhere), EndsWith("second.\n"));
}

TEST_F(LogFileTest, TheLineBehindOneThatCouldNotBeWrittenWholeIsALineOfItsOwn)
{
    // The kernel's own refusal: a file may grow to so many bytes and no further.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    log.open(path);
    const rlimit full{.rlim_cur = 10, .rlim_max = before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    log.append("first line.\n");
    log.append("second line.\n");
    setrlimit(RLIMIT_FSIZE, &before);
    log.append("third line.\n");
    EXPECT_EQ(textOf(path), "first line\nthird line.\n");
}

TEST_F(LogFileTest, AFileThatSomebodyRemovedIsMadeAgain)
{
    log.open(path);
    log.append("a.\n");
    fs::remove(path);
    log.append("b.\n");
    EXPECT_EQ(textOf(path), "b.\n");
}

TEST_F(LogFileTest, NobodyWaitsForAnotherWhoTurnsItOver)
{
    log.open(path);
    log.append(line("first", 8'000'000));
    const int other = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    log.append("second.\n");
    EXPECT_FALSE(fs::exists(older));
    EXPECT_THAT(textOf(path), EndsWith("second.\n"));
    close(other);
    log.append("third.\n");
    EXPECT_TRUE(fs::exists(older));
    EXPECT_THAT(marks(), testing::ElementsAre("first", "second", "third"));
}

TEST_F(LogFileTest, TheSecondOfTwoWritersFollowsTheFirst)
{
    LogFile other;
    log.open(path);
    other.open(path);
    log.append(line("a", 8'000'000));
    log.append("b.\n");
    other.append("c.\n");
    EXPECT_THAT(textOf(older), StartsWith("a"));
    EXPECT_EQ(textOf(path), "b.\nc.\n");
}

TEST_F(LogFileTest, ProcessesThatWriteAtOnceLoseNoLine)
{
    constexpr int kWriters = 3;
    constexpr int kLines = 50'000; // 12 MB in all: it is turned over once, with all lines left
    std::vector<pid_t> children;
    for (int writer = 0; writer < kWriters; ++writer) {
        children.push_back(fork());
        if (children.back() == 0) {
            log.open(path);
            for (int i = 0; i < kLines; ++i) {
                log.append(line(std::to_string(writer) + "-" + std::to_string(i), 80));
            }
            _exit(0);
        }
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    EXPECT_TRUE(fs::exists(older));
    const std::vector<std::string> all = marks();
    EXPECT_EQ(all.size(), std::size_t{kWriters} * kLines);
    EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), all.size());
}

} // namespace
} // namespace quillbrook
