#include "platform/linux/LinuxBundleValues.h"

#include "base/BuildValues.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(LinuxBundleValues, AreThoseOfTheBuild)
{
    const LinuxBundleValues values;
    EXPECT_EQ(values.infoValue("CFBundleIdentifier"), "cn.tarnlow.quillbrook");
    EXPECT_EQ(values.infoValue("CFBundleShortVersionString"), buildVersion());
    EXPECT_EQ(values.infoValue("CFBundleVersion"), buildVersion());
    EXPECT_EQ(values.infoValue("BuildDate"), buildDate());
    EXPECT_EQ(values.infoValue("CFBundleName"), std::nullopt);
    EXPECT_TRUE(values.bundlePath().ends_with("/platform_linux_test")) << values.bundlePath();
}

} // namespace
} // namespace quillbrook
