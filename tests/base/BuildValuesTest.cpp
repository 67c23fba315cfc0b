#include "base/BuildValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(BuildValues, HaveTheVersionOfTheProject)
{
    EXPECT_EQ(buildVersion(), QUILLBROOK_PROJECT_VERSION);
}

TEST(BuildValues, HaveADateOrNone)
{
    EXPECT_THAT(
        buildDate().value_or("2026-01-31"), testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}"));
}

} // namespace
} // namespace quillbrook
