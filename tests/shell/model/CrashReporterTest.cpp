#include "shell/model/CrashReporter.h"
#include "platform/virtual/VirtualMachine.h"
#include "shell/model/CrashSignals.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr double kLaunch = 1772328612.345; // 2026-03-01T09:30:12.345+08:00

constexpr const char* kHeader = "💥 崩溃报告（启动时间: 2026-03-01T01:30:12Z）\n"
                                "版本: 1.2.3 (45)\n"
                                "macOS: Version 14.2.1\n"
                                "Bundle路径: /Applications/Quillbrook.app\n"
                                "是否Translocation: 否\n"
                                "主机名: desk.local\n";

std::size_t occurrences(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

class CrashReporterTest : public testing::Test {
protected:
    fs::path dataDir() const { return directory.path() / "data"; }
    fs::path file(const std::string& name) const { return dataDir() / name; }

    void write(const std::string& name, const std::string& text) const
    {
        fs::create_directories(dataDir());
        std::ofstream(file(name), std::ios::binary) << text;
    }

    std::string textOf(const std::string& name) const
    {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string logText() const { return textOf("crash-20260301.log"); }

    /// What the log got after the beginning that each launch writes.
    std::string afterLaunch() const
    {
        const std::string text = logText();
        const auto warning = text.find("⚠️ 检测到上次异常退出");
        return text.substr(text.find('\n', warning) + 1);
    }

    /// Runs the crashing program to its end and gives its wait status.
    int runProgram(const std::vector<std::string>& arguments)
    {
        std::vector<std::string> texts{CRASHING_PROGRAM, dataDir()};
        texts.insert(texts.end(), arguments.begin(), arguments.end());
        std::vector<char*> values;
        for (std::string& text : texts) {
            values.push_back(text.data());
        }
        values.push_back(nullptr);
        child = fork();
        if (child == 0) {
            const rlimit noCore{};
            setrlimit(RLIMIT_CORE, &noCore);
            std::freopen("/dev/null", "w", stderr);
            execv(CRASHING_PROGRAM, values.data());
            _exit(127);
        }
        int status = 0;
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {}
        return status;
    }

    void expectDeathBy(int signal, const std::vector<std::string>& arguments)
    {
        const int status = runProgram(arguments);
        ASSERT_TRUE(WIFSIGNALED(status)) << status;
        EXPECT_EQ(WTERMSIG(status), signal);
    }

    /// The beginning of a block of the crashed program up to its stack, but for the time.
    testing::Matcher<std::string> isBlockOf(const std::string& signalLine) const
    {
        return AllOf(StartsWith("\n" + signalLine + "\n\n崩溃时间: "),
            HasSubstr(" (Unix秒)\nPID: " + std::to_string(child) + "\n\n" + kHeader
                + "最后页面: 1772328612|Today\n\n堆栈跟踪:\n"),
            HasSubstr("crashing_program("), EndsWith("\n=== 崩溃日志结束 ===\n\n"));
    }

    TemporaryDirectory directory{};
    VirtualMachine machine{dataDir(), kLaunch};
    pid_t child = 0;
};

struct Fault {
    int signal;
    const char* line;
};

std::ostream& operator<<(std::ostream& stream, const Fault& fault)
{
    return stream << sigabbrev_np(fault.signal);
}

class CrashSignalTest : public CrashReporterTest, public testing::WithParamInterface<Fault> {
protected:
    std::string number() const { return std::to_string(GetParam().signal); }
};

TEST_P(CrashSignalTest, LeavesABlockAndDiesOfTheSameSignal)
{
    expectDeathBy(GetParam().signal, {number()});
    EXPECT_THAT(afterLaunch(), isBlockOf(GetParam().line));
    EXPECT_TRUE(fs::exists(file("clean_exit")));
    EXPECT_TRUE(fs::exists(file("heartbeat.txt")));
}

TEST_P(CrashSignalTest, LeavesABlockFromAnotherThread)
{
    expectDeathBy(GetParam().signal, {number(), "thread"});
    EXPECT_THAT(afterLaunch(), isBlockOf(GetParam().line));
}

TEST_P(CrashSignalTest, DiesWithoutATraceWhenNoLogIsOpen)
{
    std::ofstream(dataDir()) << "in the way";
    for (const std::string thread : {"", "thread"}) {
        expectDeathBy(GetParam().signal, {number(), thread});
        EXPECT_TRUE(fs::is_regular_file(dataDir()));
    }
}

TEST_P(CrashSignalTest, WritesNothingAfterACleanExit)
{
    expectDeathBy(GetParam().signal, {number(), "clean"});
    EXPECT_THAT(logText(), EndsWith("=== Quillbrook 正常退出 2026-03-01T09:30:12.345+08:00 ===\n"));
}

INSTANTIATE_TEST_SUITE_P(Signals, CrashSignalTest,
    testing::Values(Fault{SIGBUS, "💥 崩溃信号: SIGBUS (总线错误 — 可能 App Translocation)"},
        Fault{SIGSEGV, "💥 崩溃信号: SIGSEGV (段错误)"},
        Fault{SIGABRT, "💥 崩溃信号: SIGABRT (异常终止)"},
        Fault{SIGILL, "💥 崩溃信号: SIGILL (非法指令)"},
        Fault{SIGFPE, "💥 崩溃信号: SIGFPE (浮点异常)"},
        Fault{SIGTRAP, "💥 崩溃信号: SIGTRAP (调试陷阱)"}),
    [](const auto& info) { return std::string("SIG") + sigabbrev_np(info.param.signal); });

TEST_F(CrashReporterTest, ARealFaultShowsWhereItHappened)
{
    expectDeathBy(SIGSEGV, {"null"});
    EXPECT_THAT(afterLaunch(), isBlockOf("💥 崩溃信号: SIGSEGV (段错误)"));
}

TEST_F(CrashReporterTest, AFaultInsideTheBlockLeavesTwoPartialBlocks)
{
    for (const std::string thread : {"", "thread"}) {
        fs::remove_all(dataDir());
        expectDeathBy(SIGSEGV, {"wild", thread});
        EXPECT_EQ(occurrences(logText(), "💥 崩溃信号: SIGSEGV"), 2U);
        EXPECT_EQ(occurrences(logText(), "堆栈跟踪:\n"), 2U);
        EXPECT_EQ(occurrences(logText(), "=== 崩溃日志结束 ==="), 0U);
    }
}

TEST_F(CrashReporterTest, AnExceptionLeavesItsBlockAndThenThatOfTheAbort)
{
    for (const std::string thread : {"", "thread"}) {
        fs::remove_all(dataDir());
        expectDeathBy(SIGABRT, {"exception", thread});
        const std::string text = afterLaunch();
        EXPECT_THAT(text,
            StartsWith("\n💥 NSException 崩溃\n时间: 2026-03-01T01:30:12Z\n"
                       "异常: std::runtime_error\n原因: the disk is full\n"
                       "最后页面: 1772328612|Today\nBundle路径: /Applications/Quillbrook.app\n"
                       "版本: 1.2.3 (45)\n堆栈:\n"));
        const std::string end = "\n=== 崩溃日志结束 ===\n\n";
        EXPECT_THAT(
            text.substr(text.find(end) + end.size()), isBlockOf("💥 崩溃信号: SIGABRT (异常终止)"));
    }
}

TEST_F(CrashReporterTest, AnExceptionThatSaysNothingHasAnUnknownReason)
{
    expectDeathBy(SIGABRT, {"nothing"});
    EXPECT_THAT(afterLaunch(), HasSubstr("\n异常: int\n原因: 未知原因\n最后页面: "));
}

TEST_F(CrashReporterTest, AnExceptionWithoutALogStillAborts)
{
    std::ofstream(dataDir()) << "in the way";
    for (const std::string thread : {"", "thread"}) {
        expectDeathBy(SIGABRT, {"exception", thread});
        EXPECT_TRUE(fs::is_regular_file(dataDir()));
    }
}

TEST_F(CrashReporterTest, TerminationAndKillingAreNotCaught)
{
    for (const int signal : {SIGTERM, SIGINT, SIGKILL}) {
        fs::remove_all(dataDir());
        expectDeathBy(signal, {std::to_string(signal)});
        EXPECT_EQ(afterLaunch(), "");
        EXPECT_EQ(textOf("clean_exit"), std::to_string(child));
        EXPECT_EQ(textOf("heartbeat.txt"), "1772328612|Today\n");
    }
}

TEST_F(CrashReporterTest, TheNextLaunchShowsTheLastPageOfTheKilledOne)
{
    expectDeathBy(SIGKILL, {std::to_string(SIGKILL)});
    write("monitor.log", "earlier\n");
    runProgram({"return"});
    const std::string warning = "⚠️ 检测到上次异常退出！PID: " + std::to_string(child)
        + "，最后页面: 1772328612|Today";
    EXPECT_THAT(logText(), EndsWith(warning + "\n"));
    EXPECT_EQ(textOf("monitor.log"), "earlier\n[2026-03-01T01:30:12Z] " + warning + "\n");
    EXPECT_EQ(occurrences(logText(), "=== Quillbrook 启动"), 2U);
}

TEST_F(CrashReporterTest, APlainLaunchAndCleanExitLeaveTheirLinesAlone)
{
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_EQ(textOf("clean_exit"), "4242");
    EXPECT_EQ(reporter.lastHeartbeat(), "1772328612|启动中");
    reporter.markCleanExit();
    EXPECT_EQ(logText(),
        "=== Quillbrook 启动 2026-03-01T09:30:12.345+08:00 ===\n"
        "Bundle: /Applications/Quillbrook.app\n"
        "Version: 0.0.0 (0)\n"
        "macOS: 14.2.1\n"
        "PID: 4242\n"
        "⚠️ 检测到上次异常退出！PID: 4242，最后页面: 未知\n"
        "=== Quillbrook 正常退出 2026-03-01T09:30:12.345+08:00 ===\n");
    EXPECT_FALSE(fs::exists(file("clean_exit")));
    EXPECT_FALSE(fs::exists(file("heartbeat.txt")));
    EXPECT_FALSE(fs::exists(file("monitor.log")));
}

TEST_F(CrashReporterTest, TheDataDirectoryIsTheOwnersAlone)
{
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_EQ(fs::status(dataDir()).permissions(), fs::perms::owner_all);
}

TEST_F(CrashReporterTest, WhatOthersCouldReadIsTakenFromThem)
{
    write("monitor.db-wal", "rows");
    fs::permissions(file("monitor.db-wal"), fs::perms(0644));
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_EQ(fs::status(file("monitor.db-wal")).permissions(), fs::perms(0600));
}

TEST_F(CrashReporterTest, TheNewestTwentyLogsAreKept)
{
    for (int day = 1; day <= 24; ++day) {
        write("crash-202602" + std::string(day < 10 ? "0" : "") + std::to_string(day) + ".log", "");
    }
    write("crash-2026.log", "");
    write("crash-20260101.log.kept", "");
    write("crash-20260l01.log", "");
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_FALSE(fs::exists(file("crash-20260205.log")));
    EXPECT_TRUE(fs::exists(file("crash-20260206.log")));
    EXPECT_TRUE(fs::exists(file("crash-20260301.log")));
    EXPECT_TRUE(fs::exists(file("crash-2026.log")));
    EXPECT_TRUE(fs::exists(file("crash-20260101.log.kept")));
    EXPECT_TRUE(fs::exists(file("crash-20260l01.log")));
}

TEST_F(CrashReporterTest, ThePresentLogStaysWhereOthersAreDatedAfterIt)
{
    for (int day = 10; day < 32; ++day) {
        write("crash-203801" + std::to_string(day) + ".log", "");
    }
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_THAT(logText(), HasSubstr("启动"));
    EXPECT_FALSE(fs::exists(file("crash-20380112.log")));
    EXPECT_TRUE(fs::exists(file("crash-20380113.log")));
}

TEST_F(CrashReporterTest, ALaunchAfterMidnightOpensANewLogAndARunningOneKeepsItsOwn)
{
    machine.clock.set(1772380799); // 2026-03-01T23:59:59+08:00
    {
        CrashReporter before(machine.platform());
        before.install();
        machine.clock.set(1772380801);
        before.markCleanExit();
    }
    CrashReporter after(machine.platform());
    after.install();
    EXPECT_THAT(logText(), EndsWith("正常退出 2026-03-02T00:00:01.000+08:00 ===\n"));
    EXPECT_THAT(
        textOf("crash-20260302.log"), StartsWith("=== Quillbrook 启动 2026-03-02T00:00:01"));
}

TEST_F(CrashReporterTest, UnreadableMarksReadAsUnknown)
{
    fs::create_directories(file("clean_exit"));
    fs::create_directories(file("heartbeat.txt"));
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_THAT(logText(), HasSubstr("PID: ?，最后页面: 未知\n"));
}

TEST_F(CrashReporterTest, AHeartbeatThatIsNoTextReadsAsUnknown)
{
    write("heartbeat.txt", "1772328612|\xFF\n");
    CrashReporter reporter(machine.platform());
    EXPECT_EQ(reporter.lastHeartbeat(), "未知");
}

TEST_F(CrashReporterTest, TheHeartbeatHoldsTheLastPageAlone)
{
    CrashReporter reporter(machine.platform());
    reporter.install();
    machine.clock.set(1767225600.9);
    reporter.updateHeartbeat("Past");
    reporter.updateHeartbeat("Today");
    EXPECT_EQ(textOf("heartbeat.txt"), "1767225600|Today\n");
    EXPECT_EQ(reporter.lastHeartbeat(), "1767225600|Today");
}

TEST_F(CrashReporterTest, AProgramOnAMountedVolumeIsMarkedInTheHeader)
{
    machine.bundleValues.setBundlePath("/Volumes/Quillbrook/Quillbrook.app");
    machine.hostFacts.setHostName(std::nullopt);
    const pid_t forked = fork();
    if (forked == 0) {
        CrashReporter reporter(machine.platform());
        reporter.install();
        raise(SIGABRT);
    }
    int status = 0;
    waitpid(forked, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_THAT(logText(),
        HasSubstr("\n是否Translocation: 是 ⚠️\n主机名: unknown\n最后页面: "));
}

TEST_F(CrashReporterTest, WithoutADirectoryTheLaunchGoesOn)
{
    std::ofstream(dataDir()) << "in the way";
    CrashReporter reporter(machine.platform());
    reporter.install();
    EXPECT_EQ(reporter.lastHeartbeat(), "未知");
    reporter.markCleanExit();
}

TEST(WriteInt, WritesDigitsWithANulBehindThem)
{
    std::array<char, 32> buffer{};
    buffer.fill('x');
    EXPECT_EQ(writeInt(1767225600, buffer), 10U);
    EXPECT_STREQ(buffer.data(), "1767225600");
    EXPECT_EQ(writeInt(0, buffer), 1U);
    EXPECT_STREQ(buffer.data(), "0");
    EXPECT_EQ(writeInt(INT64_MAX, buffer), 19U);
    EXPECT_STREQ(buffer.data(), "9223372036854775807");
}

TEST(WriteInt, WritesNothingForANegativeValueOrWithoutRoom)
{
    std::array<char, 32> buffer{};
    EXPECT_EQ(writeInt(-1, buffer), 0U);
    EXPECT_STREQ(buffer.data(), "");
    EXPECT_EQ(writeInt(7, std::span(buffer).first(1)), 0U);
    EXPECT_EQ(writeInt(7, std::span(buffer).first(0)), 0U);
    EXPECT_STREQ(buffer.data(), "");
}

TEST(WriteInt, KeepsTheLastDigitsThatFit)
{
    std::array<char, 4> buffer{};
    EXPECT_EQ(writeInt(12345, buffer), 3U);
    EXPECT_STREQ(buffer.data(), "345");
}

} // namespace
} // namespace quillbrook
