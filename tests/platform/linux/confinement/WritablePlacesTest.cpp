#include "platform/linux/confinement/WritablePlaces.h"
#include "base/AtomicFile.h"
#include "support/Bound.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

/// 0, or the reason why a file can't be opened so.
int failureOf(const fs::path& path, int flags)
{
    const int file = open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (file < 0) {
        return errno;
    }
    close(file);
    return 0;
}

int failureOf(int result)
{
    return result == 0 ? 0 : errno;
}

bool isKnownFrom(int version)
{
    return syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) >= version;
}

class WritablePlacesTest : public testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directory(inside);
        fs::create_directory(outside);
        std::ofstream(outside / "there") << "text";
        if (!canRefuseWriting()) {
            GTEST_SKIP() << "the kernel has no Landlock";
        }
    }

    /// What `body` returns in a process that writes below `inside` alone.
    int failureIn(const std::function<int()>& body) const { return inBoundChild(inside, body); }

    const TemporaryDirectory directory{};
    const fs::path inside = directory.path() / "inside";
    const fs::path outside = directory.path() / "outside";
};

TEST_F(WritablePlacesTest, NothingElsewhereIsMadeChangedOrTakenAway)
{
    EXPECT_EQ(failureIn([&] { return failureOf(outside / "new", O_WRONLY | O_CREAT); }), EACCES);
    EXPECT_EQ(failureIn([&] { return failureOf(outside / "there", O_WRONLY); }), EACCES);
    EXPECT_EQ(failureIn([&] { return failureOf(outside / "there", O_RDWR); }), EACCES);
    EXPECT_EQ(failureIn([&] { return failureOf(unlink((outside / "there").c_str())); }), EACCES);
    EXPECT_EQ(failureIn([&] { return failureOf(mkdir((outside / "a").c_str(), 0700)); }), EACCES);
    EXPECT_EQ(failureIn([&] { return failureOf(rmdir(outside.c_str())); }), EACCES);
    EXPECT_EQ(
        failureIn([&] { return failureOf(symlink("/", (outside / "link").c_str())); }), EACCES);
    EXPECT_EQ(failureIn([&] {
        return failureOf(rename((outside / "there").c_str(), (outside / "gone").c_str()));
    }),
        EACCES);
    EXPECT_TRUE(fs::exists(outside / "there"));
}

TEST_F(WritablePlacesTest, AFileElsewhereIsNotEmptied)
{
    if (!isKnownFrom(3)) {
        GTEST_SKIP() << "the kernel's Landlock doesn't know of cutting";
    }
    EXPECT_EQ(
        failureIn([&] { return failureOf(truncate((outside / "there").c_str(), 0)); }), EACCES);
    EXPECT_EQ(fs::file_size(outside / "there"), 4);
}

TEST_F(WritablePlacesTest, EverythingIsDoneInThePlaceAndBelow)
{
    EXPECT_EQ(failureIn([&] {
        fs::create_directories(inside / "a" / "b");
        std::ofstream(inside / "a" / "file") << "text";
        fs::resize_file(inside / "a" / "file", 2);
        fs::rename(inside / "a" / "file", inside / "a" / "moved");
        fs::create_symlink("moved", inside / "a" / "link");
        fs::remove(inside / "a" / "link");
        fs::remove(inside / "a" / "b");
        return 0;
    }),
        0);
    EXPECT_EQ(fs::file_size(inside / "a" / "moved"), 2);
    EXPECT_FALSE(fs::exists(inside / "a" / "b"));
}

TEST_F(WritablePlacesTest, FilesMoveBetweenFoldersOfThePlaceAndNotOutOfIt)
{
    if (!isKnownFrom(2)) {
        GTEST_SKIP() << "the kernel's Landlock doesn't know of moving";
    }
    fs::create_directory(inside / "a");
    std::ofstream(inside / "file") << "text";
    EXPECT_EQ(failureIn([&] {
        return failureOf(rename((inside / "file").c_str(), (inside / "a" / "file").c_str()));
    }),
        0);
    EXPECT_EQ(failureIn([&] {
        return failureOf(rename((inside / "a" / "file").c_str(), (outside / "file").c_str()));
    }),
        EACCES);
}

TEST_F(WritablePlacesTest, ReadingIsFree)
{
    EXPECT_EQ(failureIn([&] { return failureOf(outside / "there", O_RDONLY); }), 0);
    EXPECT_EQ(failureIn([&] { return fs::is_empty(outside) ? 1 : 0; }), 0);
}

TEST_F(WritablePlacesTest, ThreadsAndProcessesThatComeLaterAreBoundToo)
{
    EXPECT_EQ(failureIn([&] {
        int failure = 0;
        std::thread([&] { failure = failureOf(outside / "new", O_WRONLY | O_CREAT); }).join();
        return failure;
    }),
        EACCES);
    EXPECT_EQ(failureIn([&] {
        return inChild([&] { return failureOf(outside / "new", O_WRONLY | O_CREAT); });
    }),
        EACCES);
}

TEST_F(WritablePlacesTest, FilesThatAreThereCanBeAllowedWithoutNewOnes)
{
    const std::array places{
        WritablePlace{.folder = outside, .kind = WritablePlace::Kind::existingFiles}};
    EXPECT_EQ(inChild([&] {
        writeOnlyIn(places);
        return failureOf(outside / "there", O_RDWR | O_TRUNC);
    }),
        0);
    EXPECT_EQ(inChild([&] {
        writeOnlyIn(places);
        return failureOf(outside / "new", O_WRONLY | O_CREAT);
    }),
        EACCES);
}

TEST_F(WritablePlacesTest, APlaceThatIsMissingTakesNothingFromTheOthers)
{
    const std::array places{
        WritablePlace{.folder = directory.path() / "none"}, WritablePlace{.folder = inside}};
    EXPECT_EQ(inChild([&] {
        writeOnlyIn(places);
        return failureOf(inside / "new", O_WRONLY | O_CREAT);
    }),
        0);
}

TEST_F(WritablePlacesTest, TheOlderThreadWritesElsewhere)
{
    EXPECT_EQ(failureIn([&] {
        int failure = 0;
        onOlderThread([&] { failure = failureOf(outside / "new", O_WRONLY | O_CREAT); });
        return failure;
    }),
        0);
    EXPECT_EQ(failureIn([&] { return writeAtomically(outside / "whole", "text") ? 0 : 1; }), 0);
    EXPECT_TRUE(fs::exists(outside / "new"));
    EXPECT_EQ(fs::file_size(outside / "whole"), 4);
}

} // namespace
} // namespace quillbrook
