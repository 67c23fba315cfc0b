#include "platform/linux/surroundings/BaseDirectories.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace quillbrook {
namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "(unset)";
}

/// What stands in a variable after it was put right.
std::string putRight(const char* name, const char* value)
{
    setenv(name, value, 1);
    putDirectoriesRight();
    std::string left = environment(name);
    unsetenv(name);
    return left;
}

class BaseDirectories : public testing::Test {
protected:
    BaseDirectories() { setenv("HOME", "/home/somebody", 1); }
};

TEST_F(BaseDirectories, AnAbsolutePathStays)
{
    EXPECT_EQ(putRight("XDG_DATA_HOME", "/data"), "/data");
    EXPECT_EQ(putRight("XDG_DATA_DIRS", "/a:/b"), "/a:/b");
    EXPECT_EQ(putRight("XDG_CONFIG_HOME", ""), "");
    EXPECT_EQ(putRight("HOME", "/elsewhere"), "/elsewhere");
}

TEST_F(BaseDirectories, ARelativePathIsIgnored)
{
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME",
             "XDG_RUNTIME_DIR", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"}) {
        EXPECT_EQ(putRight(name, "data"), "(unset)") << name;
        EXPECT_EQ(putRight(name, "./data"), "(unset)") << name;
        EXPECT_EQ(putRight(name, "~/data"), "(unset)") << name;
    }
}

TEST_F(BaseDirectories, RelativeOnesInAListAreLeftOut)
{
    EXPECT_EQ(putRight("XDG_DATA_DIRS", "a:/b::c:/d:"), "/b:/d");
    EXPECT_EQ(putRight("XDG_CONFIG_DIRS", ":"), "(unset)");
}

TEST_F(BaseDirectories, AHomeThatIsNotNamedIsThatOfTheAccount)
{
    const passwd* account = getpwuid(getuid());
    ASSERT_NE(account, nullptr);
    const std::string home = account->pw_dir;
    EXPECT_EQ(putRight("HOME", ""), home);
    EXPECT_EQ(putRight("HOME", "home"), home);
    unsetenv("HOME");
    putDirectoriesRight();
    EXPECT_EQ(environment("HOME"), home);
}

} // namespace
} // namespace quillbrook
