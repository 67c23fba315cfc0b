#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

/// Whole scripts through the real program.
class ReplayTest : public testing::Test {
protected:
    void replay(const std::string& script, const std::string& options = "")
    {
        lab.write("s.jsonl", script);
        const LabResult result = lab.run(
            "replay " + lab.path("s.jsonl") + " --data " + lab.path("data") + " " + options);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        output = result.output;
    }

    std::vector<std::string> rows(const std::string& sql) const
    {
        return StoreReader(lab.path("data/monitor.db")).rows(sql);
    }

    std::vector<std::string> sessions() const
    {
        return rows("SELECT app_name, started_at, ended_at, close_type FROM app_sessions");
    }

    LabRun lab{};
    std::string output{};
};

TEST_F(ReplayTest, TheLogIsTheOnlyOutput)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":55,"input":0}
{"at":70,"engine":"stop"}
)");
    EXPECT_EQ(output,
        "[2026-01-01T00:00:00Z] 🚀 引擎启动\n"
        "[2026-01-01T00:00:00Z] ⌨️ 已授权，启动键盘监控...\n"
        "[2026-01-01T00:00:00Z] ✅ 就绪\n"
        "[2026-01-01T00:00:01Z] ⌨️ OK\n"
        "[2026-01-01T00:01:00Z] 🔄 恢复 | Editor\n"
        "[2026-01-01T00:01:00Z] 💓 [I] Editor 0s | hid=5s\n"
        "[2026-01-01T00:01:10Z] 🛑 监控引擎停止中...\n"
        "[2026-01-01T00:01:10Z] ✅ 监控引擎已停止\n");
    EXPECT_THAT(sessions(), ElementsAre("Editor|1767225660.0|1767225670.0|1"));
    EXPECT_THAT(rows("SELECT boot_time FROM boot_events"), ElementsAre("1767222000.0"));
}

TEST_F(ReplayTest, EventsComeBeforeTimersOfTheSameTime)
{
    replay(R"({}
{"at":0,"engine":"start"}
{"at":60,"front":{"name":"Editor","bundle":"org.ed"}}
{"at":60,"input":0}
{"at":60.5,"end":true}
)");
    EXPECT_THAT(sessions(), ElementsAre("Editor|1767225660.0|NULL|1"));
}

TEST_F(ReplayTest, TimersDueAtTheEndDontRun)
{
    const std::string script = R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":59,"input":0}
)";
    replay(script + R"({"at":60,"end":true})" + "\n");
    EXPECT_THAT(sessions(), IsEmpty());
    std::filesystem::remove_all(lab.path("data"));
    replay(script + R"({"at":60.001,"end":true})" + "\n");
    EXPECT_EQ(sessions().size(), 1U);
}

TEST_F(ReplayTest, WithoutAnEndTheScriptEndsAtItsLastLine)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":60,"input":0})");
    EXPECT_THAT(sessions(), IsEmpty());
}

TEST_F(ReplayTest, ASuspendedMachineWakesWithItsOverdueTimersOnceEach)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":55,"input":0}
{"at":100,"notify":"willSleep"}
{"at":100,"suspend":3600}
{"at":3700,"notify":"didWake"}
{"at":3701,"end":true}
)");
    EXPECT_THAT(sessions(),
        ElementsAre("Editor|1767225660.0|1767225700.0|1", "Editor|1767229300.0|NULL|5"));
    EXPECT_THAT(rows("SELECT started_at, ended_at, source_type FROM idle_periods"),
        ElementsAre("1767225700.0|1767229300.0|2"));
    EXPECT_THAT(output,
        EndsWith("[2026-01-01T01:01:40Z] 🟢 Editor\n"
                 "[2026-01-01T01:01:40Z] 💓 [A] Editor 0s | hid=3645s\n"));
}

TEST_F(ReplayTest, NoTimerRunsBetweenTwoSuspensions)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":55,"input":0}
{"at":100,"suspend":50}
{"at":150,"front":{"name":"Reader","bundle":"org.re"}}
{"at":150,"suspend":50}
{"at":203,"end":true}
)");
    // The new front is first seen by the one overdue look at 200, and two seconds later it counts.
    EXPECT_THAT(sessions(),
        ElementsAre("Editor|1767225660.0|1767225802.0|1", "Reader|1767225802.0|NULL|0"));
}

TEST_F(ReplayTest, ASuspensionAtTheEndRunsNothing)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":55,"input":0}
{"at":59,"suspend":50}
)");
    EXPECT_THAT(sessions(), IsEmpty());
}

TEST_F(ReplayTest, ACrashWritesNothingAndTheNextStartRepairs)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"}}
{"at":0,"engine":"start"}
{"at":55,"input":0}
{"at":100,"notify":"screensDidSleep"}
{"at":110,"engine":"crash"}
{"at":110,"notify":"screensDidWake"}
{"at":200,"engine":"start"}
{"at":210,"engine":"stop"}
)");
    EXPECT_THAT(sessions(), ElementsAre("Editor|1767225660.0|1767225700.0|1"));
    EXPECT_THAT(rows("SELECT started_at, ended_at, source_type FROM idle_periods"),
        ElementsAre("1767225700.0|1767225800.0|4"));
}

TEST_F(ReplayTest, ARefusedStartIsTriedAgainByTheSameEngine)
{
    replay(R"({"instances":2}
{"at":0,"engine":"start"}
{"at":1,"instances":1}
{"at":2,"engine":"start"}
{"at":3,"engine":"start"}
)");
    EXPECT_EQ(output,
        "[2026-01-01T00:00:00Z] ⚠️ Quillbrook 已有 2 个实例在运行\n"
        "[2026-01-01T00:00:00Z] ⚠️ MonitorEngine 已在运行中，退出启动\n"
        "[2026-01-01T00:00:02Z] 🚀 引擎启动\n"
        "[2026-01-01T00:00:02Z] ⌨️ 已授权，启动键盘监控...\n"
        "[2026-01-01T00:00:02Z] ✅ 就绪\n");
}

TEST_F(ReplayTest, DefaultsKeepWhatTheEngineDidNotWrite)
{
    replay(R"({"bootTime":1000,"defaults":{"birthYear":1990,"list":[1,{"a":null}],"flag":true}}
{"at":0,"engine":"start"}
)",
        "--defaults " + lab.path("d.json") + " --calls " + lab.path("c.jsonl"));
    EXPECT_EQ(lab.read("d.json"),
        R"({"birthYear":1990,"flag":true,"lastRecordedBootTime":1000,"list":[1,{"a":null}]})"
        "\n");
    EXPECT_EQ(lab.read("c.jsonl"), "");
    EXPECT_TRUE(std::filesystem::exists(lab.path("c.jsonl")));
}

TEST_F(ReplayTest, AKnownBootIsNotRecordedAgain)
{
    replay(R"({"bootTime":1000,"defaults":{"lastRecordedBootTime":1001}}
{"at":0,"engine":"start"}
)",
        "--defaults " + lab.path("d.json"));
    EXPECT_THAT(rows("SELECT * FROM boot_events"), IsEmpty());
    EXPECT_EQ(lab.read("d.json"), "{\"lastRecordedBootTime\":1001}\n");
}

TEST_F(ReplayTest, PidAndFoldersInTheirPlace)
{
    std::filesystem::create_directories(lab.path("data/monitor.log"));
    replay(R"({"pid":77}
{"at":0,"engine":"start"}
)");
    EXPECT_EQ(lab.read("data/monitor.pid"), "77");
    EXPECT_EQ(output,
        "[2026-01-01T00:00:00Z] 🚀 引擎启动\n"
        "[2026-01-01T00:00:00Z] ⌨️ 已授权，启动键盘监控...\n"
        "[2026-01-01T00:00:00Z] ✅ 就绪\n");
}

} // namespace
} // namespace quillbrook
