#include "platform/linux/LinuxHostFacts.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace quillbrook {
namespace {

std::array<int, 3> numbers(std::string_view release)
{
    const OsVersion version = kernelVersion(release);
    return {version.major, version.minor, version.patch};
}

TEST(KernelVersion, ReadsTheNumbersAtTheBeginning)
{
    EXPECT_EQ(numbers("6.1.0-13-amd64"), (std::array{6, 1, 0}));
    EXPECT_EQ(numbers("5.15.167.4-custom"), (std::array{5, 15, 167}));
    EXPECT_EQ(numbers("6.12"), (std::array{6, 12, 0}));
    EXPECT_EQ(numbers("6.12-rc3"), (std::array{6, 12, 0}));
    EXPECT_EQ(numbers("unknown"), (std::array{0, 0, 0}));
    EXPECT_EQ(numbers(""), (std::array{0, 0, 0}));
}

TEST(LinuxHostFacts, KnowsThisSystem)
{
    EXPECT_EQ(LinuxHostFacts().system(), SystemKind::linuxDesktop);
    EXPECT_GT(LinuxHostFacts().osVersion().major, 0);
    EXPECT_NE(LinuxHostFacts().osVersionText().find(", Linux "), std::string::npos);
}

} // namespace
} // namespace quillbrook
