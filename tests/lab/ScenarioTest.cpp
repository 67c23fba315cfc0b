#include "support/LabRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <utility>
#include <vector>

namespace quillbrook {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// Scripts and command lines that are not in order.
class ScenarioTest : public testing::Test {
protected:
    LabResult replay(const std::string& script)
    {
        lab.write("s.jsonl", script);
        return lab.run("replay " + lab.path("s.jsonl") + " --data " + lab.path("data"));
    }

    /// Expects that a script is refused at a line, and that nothing ran.
    void expectFault(const std::string& script, int line)
    {
        const LabResult result = replay(script);
        EXPECT_EQ(result.status, 2) << script;
        EXPECT_THAT(result.errors,
            StartsWith(
                "quillbrook-lab: " + lab.path("s.jsonl") + ":" + std::to_string(line) + ": "))
            << script;
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << script;
        EXPECT_EQ(result.output, "") << script;
        EXPECT_FALSE(std::filesystem::exists(lab.path("data"))) << script;
    }

    LabRun lab{};
};

TEST_F(ScenarioTest, EveryMemberAndEventIsTaken)
{
    const LabResult result = replay(
        R"({"clock":1000.5,"bootTime":null,"defaults":{"a":{"b":1}},"trusted":false,"monitor":"fail","tap":"fail","inputSource":null,"instances":1,"pid":7,"front":{"name":null,"bundle":"x"},"tccutil":"missing","osascript":1,"load":[1,2.5,3],"cpuTicks":null,"memory":{"active":1,"wired":2,"compressor":3,"pageSize":4096,"physical":8589934592},"swap":null,"processBytes":648,"windowServer":null}
{"at":0,"engine":"crash"}
{"at":0,"engine":"stop"}
{"at":0.5,"input":0}
{"at":0.5,"input":12.5}
{"at":1,"keys":0}
{"at":1,"notify":"screensDidSleep"}
{"at":1,"notify":"screensDidWake"}
{"at":1,"notify":"willSleep"}
{"at":1,"notify":"didWake"}
{"at":1,"bootTime":5}
{"at":1,"trusted":true}
{"at":1,"monitor":"ok"}
{"at":1,"tap":"ok"}
{"at":1,"inputSource":"a"}
{"at":1,"instances":2}
{"at":1,"front":null}
{"at":1,"tccutil":0}
{"at":1,"osascript":"missing"}
{"at":1,"load":[0,0,0]}
{"at":1,"cpuTicks":[1,2,3,4]}
{"at":1,"memory":null}
{"at":1,"swap":{"total":1,"used":0.5}}
{"at":1,"processBytes":0}
{"at":1,"windowServer":"1 2"}
{"at":1,"suspend":5}
{"at":6,"end":true}
)");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(ScenarioTest, AHeaderAloneIsAScript)
{
    EXPECT_EQ(replay("{}").status, 0);
    std::filesystem::remove_all(lab.path("data"));
    expectFault("", 1);
}

TEST_F(ScenarioTest, MalformedLinesAreNamed)
{
    const std::vector<std::pair<std::string, int>> faults = {
        {"[]\n", 1},
        {"{\n", 1},
        {"{} x\n", 1},
        {"{\"unknown\":1}\n", 1},
        {"{\"unknown\\nin two lines\":1}\n", 1},
        {"{\"engine\":\"start\"}\n", 1},
        {"{\"clock\":\"1\"}\n", 1},
        {"{\"pid\":1.5}\n", 1},
        {"{\"defaults\":[]}\n", 1},
        {"{\"front\":{\"name\":\"a\"}}\n", 1},
        {"{\"front\":{\"name\":\"a\",\"bundle\":1}}\n", 1},
        {"{\"front\":{\"name\":\"a\",\"bundle\":\"b\",\"c\":1}}\n", 1},
        {"{\"load\":[1,2]}\n", 1},
        {"{\"load\":[1,2,\"3\"]}\n", 1},
        {"{\"cpuTicks\":[1,2,3]}\n", 1},
        {"{\"memory\":{\"active\":1}}\n", 1},
        {"{\"swap\":{}}\n", 1},
        {"{\"monitor\":true}\n", 1},
        {"{\"tap\":\"maybe\"}\n", 1},
        {"{\"tccutil\":\"gone\"}\n", 1},
        {"{\"trusted\":1}\n", 1},
        {"{\"bootTime\":1.5}\n", 1},
        {"{}\n\n", 2},
        {"{}\n{\"at\":0}\n", 2},
        {"{}\n{\"engine\":\"start\"}\n", 2},
        {"{}\n{\"at\":\"0\",\"engine\":\"start\"}\n", 2},
        {"{}\n{\"at\":-1,\"engine\":\"start\"}\n", 2},
        {"{}\n{\"at\":0,\"engine\":\"pause\"}\n", 2},
        {"{}\n{\"at\":0,\"engine\":\"start\",\"keys\":1}\n", 2},
        {"{}\n{\"at\":0,\"unknown\":1}\n", 2},
        {"{}\n{\"at\":0,\"clock\":1}\n", 2},
        {"{}\n{\"at\":0,\"defaults\":{}}\n", 2},
        {"{}\n{\"at\":0,\"pid\":1}\n", 2},
        {"{}\n{\"at\":0,\"input\":-0.5}\n", 2},
        {"{}\n{\"at\":0,\"keys\":-1}\n", 2},
        {"{}\n{\"at\":0,\"keys\":1.5}\n", 2},
        {"{}\n{\"at\":0,\"suspend\":-1}\n", 2},
        {"{}\n{\"at\":1e308,\"suspend\":1e308}\n", 2},
        {"{}\n{\"at\":0,\"notify\":\"sleep\"}\n", 2},
        {"{}\n{\"at\":0,\"end\":false}\n", 2},
        {"{}\n{\"at\":5,\"keys\":1}\n{\"at\":4.9,\"keys\":1}\n", 3},
        {"{}\n{\"at\":5,\"suspend\":10}\n{\"at\":14.9,\"keys\":1}\n", 3},
        {"{}\n{\"at\":5,\"end\":true}\n{\"at\":6,\"keys\":1}\n", 3},
        {"{}\n{\"at\":0,\"engine\":\"start\"}\n{\"at\":1,\"oops\":1}\n", 3},
    };
    for (const auto& [script, line] : faults) {
        expectFault(script, line);
    }
}

TEST_F(ScenarioTest, CommandLinesThatAreNotInOrderAreUsageErrors)
{
    lab.write("s.jsonl", "{}\n");
    const std::string script = lab.path("s.jsonl");
    for (const std::string& arguments :
        std::vector<std::string>{"", "play", "replay", "replay " + script,
            "replay " + script + " --data", "replay " + script + " --data a --data b",
            "replay " + script + " --what --data a", "replay " + script + " more --data a",
            "replay --data a", "replay " + lab.path("none") + " --data a",
            "replay " + script + " --data a --calls /none/at/all"}) {
        const LabResult result = lab.run(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_THAT(result.errors, testing::MatchesRegex("quillbrook-lab: .*:[0-9]+: .*\n"))
            << arguments;
        EXPECT_EQ(result.output, "") << arguments;
    }
}

TEST_F(ScenarioTest, EachCommandExplainsItself)
{
    EXPECT_THAT(lab.run("--help").output, HasSubstr("replay"));
    const LabResult help = lab.run("replay --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, StartsWith("usage: quillbrook-lab replay "));
    EXPECT_THAT(help.output, EndsWith("\n"));
}

} // namespace
} // namespace quillbrook
