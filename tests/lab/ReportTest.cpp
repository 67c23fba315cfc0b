#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ReportTest : public testing::Test {
protected:
    std::string report(const std::string& arguments) const
    {
        const LabResult result = lab.run("report --data " + lab.path("data") + " " + arguments);
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.output;
    }

    void seed(const std::string& name, const std::string& arguments) const
    {
        const LabResult result
            = lab.run("seed --data " + lab.path(name) + " --now 1767260000.5 " + arguments);
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, "");
    }

    std::vector<std::string> rows(const std::string& name, const std::string& sql) const
    {
        return StoreReader(lab.path(name + "/monitor.db")).rows(sql);
    }

    LabRun lab{};
};

TEST_F(ReportTest, WithoutAStoreTheRecordIsEmpty)
{
    const std::string empty
        = R"({"appUsage":[],"alertCount":0,"overview":null,"historyOverview":null,)"
          R"("hourlyTimeline":[],"alerts":[],"keylogHourly":[],"totalKeylogKeystrokes":0,)"
          R"("totalKeylogTokens":0,"totalActiveKeylogMinutes":0,"tpm":0,"categoryUsage":[],)"
          R"("categorySessions":[],"totalActiveSeconds":0,"recentSessions":[],"recentIdles":[],)"
          R"("focusHours":[],"durationBuckets":[],"dailyAvgSessions":[])";
    EXPECT_EQ(report("--tab Today"), empty + "}\n");
    EXPECT_EQ(report("--tab 关于"), empty + "}\n");
    EXPECT_EQ(report("--tab Habit"), empty + ",\"categoryTrend\":[]}\n");
}

TEST_F(ReportTest, AStoreShowsWhatIsInIt)
{
    seed("data", "--days 0");
    StoreReader(lab.path("data/monitor.db"))
        .exec("INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec) "
              "VALUES ('A\"\n', 'com.apple.Safari', 1767250000.25, 1767250010.5, 10.25)");
    EXPECT_THAT(report("--tab Today --now 1767260000.5 --boot 7"),
        AllOf(StartsWith(R"({"appUsage":[{"appName":"A\"\n","bundleId":"com.apple.Safari",)"
                         R"("totalSeconds":10.25,"sessionCount":1,"categoryLabel":)"),
            HasSubstr(R"("overview":{"bootTime":7,"firstActivity":1767250000.25,)")));
    EXPECT_THAT(report("--tab Sessions --period 6小时 --now 1767260000.5"),
        HasSubstr(R"("startedAt":1767250000.25,"endedAt":1767250010.5,"durationSec":10.25,)"
                  R"("closeType":"switch","status":"closed"}])"));
    EXPECT_THAT(report("--tab Sessions --now 1767260000.5"), HasSubstr(R"("recentSessions":[])"));
    EXPECT_THAT(report("--tab Habit --now 1767260000.5"), EndsWith("}]}\n"));
    EXPECT_THAT(
        report("--tab Future --now 1767260000.5"), StartsWith(R"({"appUsage":[],"alertCount":0,)"));
    EXPECT_THAT(
        report("--tab Today --now 1767260000.5 --boot null"), HasSubstr(R"("bootTime":0,)"));
}

TEST_F(ReportTest, ALabelOfAnotherPageIsAUsageError)
{
    for (const char* arguments : {"--tab Alerts --period 本周", "--tab Future --period 今日",
             "--tab Tokens --period 今日", "--tab today", "--tab Today --zone 1.5", ""}) {
        const LabResult result
            = lab.run("report --data " + lab.path("data") + " " + std::string(arguments));
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.errors, StartsWith("quillbrook-lab: arguments:")) << arguments;
    }
}

TEST_F(ReportTest, EqualArgumentsSeedEqualRows)
{
    seed("a", "--days 20 --seed 3 --sessions-per-day 60");
    seed("b", "--days 20 --seed 3 --sessions-per-day 60");
    seed("c", "--days 20 --seed 4 --sessions-per-day 60");
    for (const char* table : {"app_sessions", "idle_periods", "keystrokes", "alerts"}) {
        const std::string sql = std::string("SELECT * FROM ") + table;
        EXPECT_EQ(rows("a", sql), rows("b", sql));
        EXPECT_NE(rows("a", sql), rows("c", sql));
    }
}

TEST_F(ReportTest, SeededHistoryHasEveryKindOfRow)
{
    seed("data", "--days 30 --sessions-per-day 100");
    EXPECT_EQ(rows("data", "SELECT DISTINCT source_type FROM idle_periods").size(), 4U);
    EXPECT_EQ(rows("data", "SELECT DISTINCT input_method FROM keystrokes").size(), 4U);
    EXPECT_EQ(rows("data", "SELECT DISTINCT alert_type FROM alerts").size(), 5U);
    EXPECT_EQ(rows("data", "SELECT 1 FROM app_sessions WHERE ended_at > 1767260000.5").size(), 0U);
    EXPECT_EQ(rows("data",
                  "SELECT DISTINCT category_id FROM app_categories JOIN app_sessions "
                  "ON bundle_id LIKE match_key || '%'")
                  .size(),
        12U);
}

} // namespace
} // namespace quillbrook
