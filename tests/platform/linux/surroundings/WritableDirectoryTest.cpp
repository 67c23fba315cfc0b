#include "platform/linux/surroundings/WritableDirectory.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

class WritableDirectory : public testing::Test {
protected:
    bool isEmpty() const { return fs::is_empty(directory.path()); }

    TemporaryDirectory directory{};
};

TEST_F(WritableDirectory, IsOneInWhichAFileCanBeMade)
{
    EXPECT_FALSE(writingFault(directory.path()));
    EXPECT_TRUE(isEmpty());
}

TEST_F(WritableDirectory, NeedNotExistYet)
{
    EXPECT_FALSE(writingFault(directory.path() / "a" / "b"));
    EXPECT_FALSE(writingFault(directory.path() / "a" / ""));
    EXPECT_TRUE(isEmpty());
}

TEST_F(WritableDirectory, AFileInItsPlaceOrAboveItIsNone)
{
    std::ofstream(directory.path() / "file") << "text";
    EXPECT_EQ(writingFault(directory.path() / "file"), std::errc::not_a_directory);
    EXPECT_EQ(writingFault(directory.path() / "file" / "a"), std::errc::not_a_directory);
    EXPECT_EQ(writingFault("/dev/null/a"), std::errc::not_a_directory);
}

TEST_F(WritableDirectory, ANameThatIsTooLongIsNone)
{
    EXPECT_EQ(writingFault(directory.path() / std::string(256, 'x')), std::errc::filename_too_long);
    fs::path deep = directory.path();
    for (int i = 0; i < 50; ++i) {
        deep /= std::string(100, 'x');
    }
    EXPECT_EQ(writingFault(deep), std::errc::filename_too_long);
}

TEST_F(WritableDirectory, ALinkInACircleIsNone)
{
    fs::create_symlink(directory.path() / "circle", directory.path() / "circle");
    EXPECT_EQ(
        writingFault(directory.path() / "circle" / "a"), std::errc::too_many_symbolic_link_levels);
}

TEST_F(WritableDirectory, ASystemThatTakesNoFilesIsNone)
{
    EXPECT_TRUE(writingFault("/proc/self"));
}

} // namespace
} // namespace quillbrook
