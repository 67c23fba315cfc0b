#include "engine/MonitorLog.h"

#include "platform/virtual/VirtualClock.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <string>

namespace quillbrook {
namespace {

TEST(FmtDuration, IsCutAndNeverRounded)
{
    EXPECT_EQ(fmtDuration(0), "0s");
    EXPECT_EQ(fmtDuration(59.9), "59s");
    EXPECT_EQ(fmtDuration(60), "1m0s");
    EXPECT_EQ(fmtDuration(3599), "59m59s");
    EXPECT_EQ(fmtDuration(3599.999), "59m59s");
    EXPECT_EQ(fmtDuration(3600), "1h0m");
    EXPECT_EQ(fmtDuration(7325), "2h2m");
    EXPECT_EQ(fmtDuration(360000), "100h0m");
}

TEST(FmtDuration, NegativeSpansAreInSeconds)
{
    EXPECT_EQ(fmtDuration(-0.5), "0s");
    EXPECT_EQ(fmtDuration(-3600.7), "-3600s");
}

TEST(FmtDurationDeathTest, RefusesWhatIsNoSpan)
{
    EXPECT_DEATH(fmtDuration(std::nan("")), "not a span of time");
    EXPECT_DEATH(fmtDuration(INFINITY), "not a span of time");
    EXPECT_DEATH(fmtDuration(9223372036854775808.0), "not a span of time");
    EXPECT_EQ(fmtDuration(-9223372036854775808.0), "-9223372036854775808s");
}

class MonitorLogTest : public testing::Test {
protected:
    std::string fileText() const
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string printed(const std::string& message)
    {
        testing::internal::CaptureStdout();
        log.log(message);
        return testing::internal::GetCapturedStdout();
    }

    TemporaryDirectory directory{};
    std::filesystem::path path = directory.path() / "monitor.log";
    VirtualClock clock{1769846709.9};
    MonitorLog log{clock};
};

TEST_F(MonitorLogTest, ALineStandsInTheFileAndOnStandardOutput)
{
    log.openFile(path);
    const std::string line = "[2026-01-31T08:05:09Z] ✅ 就绪\n";
    EXPECT_EQ(printed("✅ 就绪"), line);
    EXPECT_EQ(fileText(), line);
}

TEST_F(MonitorLogTest, LinesGoBehindWhatIsThere)
{
    std::ofstream(path) << "old\n";
    log.openFile(path);
    printed("a");
    std::ofstream(path, std::ios::app) << "another writer\n";
    printed("b");
    EXPECT_EQ(
        fileText(), "old\n[2026-01-31T08:05:09Z] a\nanother writer\n[2026-01-31T08:05:09Z] b\n");
}

TEST_F(MonitorLogTest, WithoutAFileLinesStillArePrinted)
{
    EXPECT_EQ(printed("a"), "[2026-01-31T08:05:09Z] a\n");
    log.openFile(directory.path());
    EXPECT_EQ(printed("b"), "[2026-01-31T08:05:09Z] b\n");
    log.openFile(path);
    log.closeFile();
    EXPECT_EQ(printed("c"), "[2026-01-31T08:05:09Z] c\n");
    EXPECT_EQ(fileText(), "");
}

TEST_F(MonitorLogTest, ALineIsWholeUtf8WhateverTheMessageHolds)
{
    log.openFile(path);
    printed("a\xFF\nb" + std::string(4096, 'x') + "\xE6");
    EXPECT_EQ(fileText(),
        "[2026-01-31T08:05:09Z] a\xEF\xBF\xBD\nb" + std::string(4096, 'x') + "\xEF\xBF\xBD\n");
}

TEST_F(MonitorLogTest, TimesAreCutToWholeSecondsOfUtc)
{
    clock.set(0.999);
    EXPECT_EQ(printed("a"), "[1970-01-01T00:00:00Z] a\n");
    clock.set(-0.5);
    EXPECT_EQ(printed("a"), "[1969-12-31T23:59:59Z] a\n");
    clock.set(951782400); // a leap day
    EXPECT_EQ(printed("a"), "[2000-02-29T00:00:00Z] a\n");
    clock.set(1e300);
    EXPECT_EQ(printed("a"), "[9999-12-31T23:59:59Z] a\n");
}

} // namespace
} // namespace quillbrook
