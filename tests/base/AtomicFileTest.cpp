#include "base/AtomicFile.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

TEST(WriteAtomically, ReplacesTheWholeFileAndLeavesNoDraft)
{
    const TemporaryDirectory directory;
    const fs::path path = directory.path() / "file";
    EXPECT_TRUE(writeAtomically(path, "a longer text"));
    EXPECT_TRUE(writeAtomically(path, "short"));
    std::ifstream stream(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "short");
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 1);
}

TEST(WriteAtomically, LeavesWhatIsInTheWay)
{
    const TemporaryDirectory directory;
    const fs::path path = directory.path() / "folder";
    fs::create_directory(path);
    EXPECT_FALSE(writeAtomically(path, "text"));
    EXPECT_FALSE(writeAtomically(directory.path() / "missing" / "file", "text"));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path()), {}), 1);
}

} // namespace
} // namespace quillbrook
