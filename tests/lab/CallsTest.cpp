#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

/// Scripts with keys and strain, and the calls that they make outside.
class CallsTest : public testing::Test {
protected:
    void replay(const std::string& script)
    {
        lab.write("s.jsonl", script);
        const LabResult result = lab.run("replay " + lab.path("s.jsonl") + " --data "
            + lab.path("data") + " --calls " + lab.path("calls"));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        output = result.output;
        calls = lab.read("calls");
    }

    std::vector<std::string> rows(const std::string& sql) const
    {
        return StoreReader(lab.path("data/monitor.db")).rows(sql);
    }

    std::vector<std::string> keystrokes() const
    {
        return rows("SELECT timestamp, app_name, input_method, keystroke_count FROM keystrokes");
    }

    LabRun lab{};
    std::string output{};
    std::string calls{};
};

TEST_F(CallsTest, KeysReachTheMonitorAndCountAsInput)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"},"inputSource":"im.rime.Squirrel"}
{"at":0,"engine":"start"}
{"at":0.5,"keys":3}
{"at":59,"keys":250}
{"at":61,"engine":"stop"}
)");
    EXPECT_THAT(keystrokes(), ElementsAre("1767225660.0|Editor|quanpin|250"));
    EXPECT_THAT(rows("SELECT app_name FROM app_sessions"), ElementsAre("Editor"));
    EXPECT_EQ(calls, "");
}

TEST_F(CallsTest, KeysThatNothingCountsAreInputOnly)
{
    replay(R"({"front":{"name":"Editor","bundle":"org.ed"},"monitor":"fail","tap":"fail"}
{"at":0,"keys":3}
{"at":0,"engine":"start"}
{"at":59,"keys":5}
{"at":61,"engine":"stop"}
)");
    EXPECT_THAT(keystrokes(), IsEmpty());
    EXPECT_THAT(rows("SELECT started_at FROM app_sessions"), ElementsAre("1767225660.0"));
}

TEST_F(CallsTest, TheTapIsSwitchedOnAndOff)
{
    replay(R"({"monitor":"fail"}
{"at":0,"engine":"start"}
{"at":10,"keys":2}
{"at":20.25,"engine":"stop"}
)");
    EXPECT_EQ(calls, R"({"at":1767225601,"tapEnable":true}
{"at":1767225620.25,"tapEnable":false}
)");
    EXPECT_THAT(keystrokes(), ElementsAre("1767225620.25|Unknown|english|2"));
}

TEST_F(CallsTest, RoundNumbersHaveNoExponent)
{
    replay(R"({"clock":1800000000,"trusted":false,"load":[0,100000,0]}
{"at":0,"engine":"start"}
{"at":600,"end":true}
)");
    EXPECT_THAT(calls, testing::StartsWith("{\"at\":1800000000,\"prompt\":\"accessibility\"}"));
    EXPECT_THAT(rows("SELECT metrics_json FROM alerts"), testing::Each("{\"load_5m\":100000}"));
}

TEST_F(CallsTest, AResultThatCannotBeWrittenLeavesTheOtherAlone)
{
    lab.write("s.jsonl", "{}\n");
    lab.write("calls", "kept");
    const LabResult result = lab.run("replay " + lab.path("s.jsonl") + " --data " + lab.path("data")
        + " --calls " + lab.path("calls") + " --defaults /nonexistent/x");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(lab.read("calls"), "kept");
}

TEST_F(CallsTest, ACrashWritesNoCall)
{
    replay(R"({"monitor":"fail"}
{"at":0,"engine":"start"}
{"at":20,"engine":"crash"}
)");
    EXPECT_EQ(calls, "{\"at\":1767225601,\"tapEnable\":true}\n");
}

TEST_F(CallsTest, ThePermissionIsAskedForAndTold)
{
    replay(R"({"trusted":false}
{"at":0,"engine":"start"}
{"at":10,"trusted":true}
{"at":70,"keys":2}
{"at":130,"end":true}
)");
    EXPECT_THAT(calls,
        "{\"at\":1767225600,\"prompt\":\"accessibility\"}\n"
        "{\"at\":1767225600,\"launch\":\"/usr/bin/osascript\",\"args\":[\"-e\",\"display "
        "notification \\\"请在 系统设置 → 隐私与安全性 → 辅助功能 中开启 Quillbrook，以启用键盘"
        "输入统计\\\" with title \\\"Quillbrook 键盘监控未启用\\\"\"],\"wait\":false}\n");
    EXPECT_THAT(keystrokes(), IsEmpty());
}

TEST_F(CallsTest, ToolsEndAsTheScriptSays)
{
    replay(R"({"monitor":"fail","tap":"fail","tccutil":64,"osascript":"missing"}
{"at":0,"engine":"start"}
{"at":60,"end":true}
)");
    EXPECT_THAT(calls,
        EndsWith("{\"at\":1767225641,\"launch\":\"/usr/bin/tccutil\",\"args\":[\"reset\","
                 "\"Accessibility\",\"cn.tarnlow.quillbrook\"],\"wait\":true}\n"
                 "{\"at\":1767225641,\"launch\":\"/usr/bin/osascript\",\"args\":[\"-e\",\"do shell "
                 "script \\\"tccutil reset Accessibility cn.tarnlow.quillbrook\\\" with "
                 "administrator privileges\"],\"wait\":true}\n"));
    EXPECT_THAT(output, HasSubstr("⚠️ 通知发送失败: not found: /usr/bin/osascript\n"));
    EXPECT_THAT(output, EndsWith("🔧 TCC 重置完成 (exit: 64)\n"));
}

TEST_F(CallsTest, AMissingResetToolIsWrittenLikeAnyOther)
{
    replay(R"({"monitor":"fail","tap":"fail","tccutil":"missing"}
{"at":0,"engine":"start"}
{"at":60,"end":true}
)");
    EXPECT_THAT(calls, EndsWith("\"cn.tarnlow.quillbrook\"],\"wait\":true}\n"));
    EXPECT_THAT(output, EndsWith("⚠️ TCC 重置失败: not found: /usr/bin/tccutil\n"));
}

TEST_F(CallsTest, StrainIsAnAlert)
{
    replay(R"({"swap":{"total":1000,"used":905},"windowServer":"40.5 1"}
{"at":0,"engine":"start"}
{"at":60,"swap":null}
{"at":60,"swap":{"total":1000,"used":905}}
{"at":61,"swap":null}
{"at":61,"memory":{"active":9,"wired":0,"compressor":0,"pageSize":1,"physical":10}}
{"at":61,"load":[0,51,0]}
{"at":240,"windowServer":null}
{"at":300,"load":[51,0,0]}
{"at":300,"windowServer":"40.5 1"}
{"at":361,"end":true}
)");
    EXPECT_THAT(rows("SELECT timestamp, alert_type, metrics_json FROM alerts"),
        ElementsAre("1767225660.0|high_swap|{\"swap_percent\":90.5}",
            "1767225960.0|high_memory|{\"memory_percent\":90}"));
    EXPECT_THAT(calls,
        HasSubstr("\"args\":[\"-e\",\"display notification \\\"Swap 使用率达 90%，系统可能强制终止"
                  "应用\\\" with title \\\"🔴 Swap 严重不足\\\"\"],\"wait\":false}\n"));
}

TEST_F(CallsTest, TheDisplayServersLineIsNotWritten)
{
    replay(R"({}
{"at":0,"engine":"start"}
{"at":600,"end":true}
)");
    EXPECT_EQ(calls, "");
}

} // namespace
} // namespace quillbrook
