#include "base/PrivateFiles.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

class PrivateFilesTest : public testing::Test {
protected:
    PrivateFilesTest() : mask(umask(022)) { fs::create_directories(folder / "inner"); }
    ~PrivateFilesTest() override { umask(mask); }

    fs::path write(const fs::path& path, unsigned mode)
    {
        std::ofstream(path) << "x";
        fs::permissions(path, fs::perms(mode));
        return path;
    }

    static unsigned modeOf(const fs::path& path)
    {
        return static_cast<unsigned>(fs::status(path).permissions());
    }

    TemporaryDirectory directory{};
    fs::path folder = directory.path() / "ours";
    mode_t mask;
};

TEST_F(PrivateFilesTest, TakesTheFolderAndAllInItFromOthers)
{
    fs::permissions(folder, fs::perms(0777));
    fs::permissions(folder / "inner", fs::perms(0755));
    const fs::path log = write(folder / "monitor.log", 0666);
    const fs::path deep = write(folder / "inner" / "copy", 0640);
    const fs::path readOnly = write(folder / "kept", 0444);
    takeFromOthers(folder);
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(folder / "inner"), 0700U);
    EXPECT_EQ(modeOf(log), 0600U);
    EXPECT_EQ(modeOf(deep), 0600U);
    EXPECT_EQ(modeOf(readOnly), 0400U);
}

TEST_F(PrivateFilesTest, FollowsNoLinkOutOfTheFolder)
{
    const fs::path outside = write(directory.path() / "outside", 0644);
    const fs::path elsewhere = directory.path() / "elsewhere";
    fs::create_directory(elsewhere);
    fs::permissions(elsewhere, fs::perms(0755));
    const fs::path inside = write(elsewhere / "inside", 0644);
    fs::create_symlink(outside, folder / "to-file");
    fs::create_directory_symlink(elsewhere, folder / "to-folder");
    takeFromOthers(folder);
    EXPECT_EQ(modeOf(outside), 0644U);
    EXPECT_EQ(modeOf(elsewhere), 0755U);
    EXPECT_EQ(modeOf(inside), 0644U);
}

TEST_F(PrivateFilesTest, AFolderThatLiesElsewhereIsFoundThroughItsLink)
{
    const fs::path log = write(folder / "monitor.log", 0644);
    const fs::path link = directory.path() / "link";
    fs::create_directory_symlink(folder, link);
    takeFromOthers(link);
    EXPECT_EQ(modeOf(folder), 0700U);
    EXPECT_EQ(modeOf(log), 0600U);
}

TEST_F(PrivateFilesTest, WhatIsNoFolderIsLeftAlone)
{
    const fs::path file = write(directory.path() / "file", 0644);
    takeFromOthers(file);
    EXPECT_EQ(modeOf(file), 0644U);
    takeFromOthers(directory.path() / "nowhere");
    EXPECT_FALSE(fs::exists(directory.path() / "nowhere"));
}

TEST_F(PrivateFilesTest, WhatIsMadeAfterwardsIsTheOwnersAlone)
{
    makeFilesPrivate();
    std::ofstream(folder / "new") << "x";
    fs::create_directory(folder / "new-folder");
    EXPECT_EQ(modeOf(folder / "new"), 0600U);
    EXPECT_EQ(modeOf(folder / "new-folder"), 0700U);
}

TEST_F(PrivateFilesTest, WhatAPersonSavesHasTheModeThatTheyAreUsedTo)
{
    umask(027);
    makeFilesPrivate();
    {
        const UsualFileModes usual;
        std::ofstream(folder / "saved") << "x";
    }
    std::ofstream(folder / "ours-again") << "x";
    EXPECT_EQ(modeOf(folder / "saved"), 0640U);
    EXPECT_EQ(modeOf(folder / "ours-again"), 0600U);
}

} // namespace
} // namespace quillbrook
