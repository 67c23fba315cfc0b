#include "support/EngineFixture.h"

#include <sstream>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

constexpr const char* kTapWarning = "CGEvent.tapCreate 失败。请前往 系统设置 → 隐私与安全性 → "
                                    "辅助功能，关闭再重新开启 Quillbrook 权限";

/// Keys, and the permission to count them.
class KeystrokeCaptureTest : public EngineFixture {
protected:
    /// "second after the start|application|class|count".
    std::vector<std::string> keystrokes() const
    {
        return store().rows("SELECT CAST(timestamp - 1767225600 AS INTEGER), app_name, "
                            "input_method, keystroke_count FROM keystrokes ORDER BY id");
    }

    /// The log without the lines that the attention writes, each without its time, with the second
    /// after the start in front.
    std::vector<std::string> keyLines() const
    {
        std::vector<std::string> lines;
        std::istringstream stream(logText());
        for (std::string line; std::getline(stream, line);) {
            const std::string text = line.substr(line.find(']') + 2);
            for (const char* mark : {"⌨️", "tapCreate", "TCC", "tryCreateKeyTap", "💡",
                     "辅助功能", "SQL", "击键", "通知"}) {
                if (text.find(mark) != std::string::npos) {
                    lines.push_back(line.substr(12, 8) + " " + text);
                    break;
                }
            }
        }
        return lines;
    }

    /// The programs launched but for the display server's line, "second|path|last argument".
    std::vector<std::string> launches() const
    {
        std::vector<std::string> found;
        for (const OutsideCall& call : machine.calls.all()) {
            const auto* launch = std::get_if<LaunchCall>(&call.what);
            if (launch != nullptr && launch->path != "/bin/bash") {
                found.push_back(std::to_string(static_cast<int>(call.at - kStart)) + "|"
                    + launch->path + "|" + launch->arguments.back());
            }
        }
        return found;
    }

    std::vector<bool> tapSwitches() const
    {
        std::vector<bool> found;
        for (const OutsideCall& call : machine.calls.all()) {
            if (const auto* tap = std::get_if<TapEnableCall>(&call.what)) {
                found.push_back(tap->isOn);
            }
        }
        return found;
    }

    void startCounting()
    {
        start();
        machine.runFor(1);
    }

    void refuseMonitorAndTap()
    {
        machine.keyCounting.setGivesMonitors(false);
        machine.keyCounting.setGivesTaps(false);
    }
};

TEST_F(KeystrokeCaptureTest, KeysOfAMinuteAreOneRow)
{
    bringToFront("Editor");
    startCounting();
    machine.keyCounting.press(5);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Editor|english|5"));
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Editor|english|5"));
    machine.keyCounting.press(1);
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Editor|english|5", "180|Editor|english|1"));
}

TEST_F(KeystrokeCaptureTest, TheTimeOfTheRowIsADouble)
{
    startCounting();
    machine.keyCounting.press(1);
    machine.runFor(59);
    EXPECT_THAT(store().rows("SELECT timestamp, typeof(timestamp), typeof(keystroke_count) "
                             "FROM keystrokes"),
        ElementsAre("1767225660.0|real|integer"));
}

TEST_F(KeystrokeCaptureTest, NoKeyIsNoRow)
{
    startCounting();
    machine.runFor(3600);
    EXPECT_THAT(keystrokes(), IsEmpty());
}

TEST_F(KeystrokeCaptureTest, KeysBeforeTheFirstSecondAreNotCounted)
{
    start();
    machine.runFor(0.5);
    machine.keyCounting.press(7);
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), IsEmpty());
}

TEST_F(KeystrokeCaptureTest, AllKeysGoToTheApplicationOfTheFlush)
{
    bringToFront("Editor");
    startCounting();
    machine.keyCounting.press(100);
    bringToFront("Terminal");
    machine.keyCounting.press(3);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Terminal|english|103"));
}

TEST_F(KeystrokeCaptureTest, SystemApplicationsHaveKeysToo)
{
    machine.bringToFront("loginwindow", "com.apple.loginwindow");
    startCounting();
    machine.keyCounting.press(4);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|loginwindow|english|4"));
}

TEST_F(KeystrokeCaptureTest, WithoutANameTheApplicationIsUnknown)
{
    startCounting();
    machine.keyCounting.press(1);
    machine.runFor(59);
    machine.workspace.setFront(RunningApplication{.bundleIdentifier = "org.example.nameless"});
    machine.keyCounting.press(2);
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|1", "120|Unknown|english|2"));
}

TEST_F(KeystrokeCaptureTest, NamesAreBoundNotPasted)
{
    machine.bringToFront("O'Neil \"📝\"; DROP TABLE keystrokes;--", "org.example.quotes");
    startCounting();
    machine.keyCounting.press(1);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|O'Neil \"📝\"; DROP TABLE keystrokes;--|english|1"));
}

TEST_F(KeystrokeCaptureTest, StopWritesTheKeysThatAreOpen)
{
    startCounting();
    machine.keyCounting.press(9);
    machine.runFor(10);
    stop();
    EXPECT_THAT(keystrokes(), ElementsAre("11|Unknown|english|9"));
}

TEST_F(KeystrokeCaptureTest, ACrashLosesOnlyTheOpenMinute)
{
    startCounting();
    machine.keyCounting.press(9);
    machine.runFor(59);
    machine.keyCounting.press(2);
    crash();
    startCounting();
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|9"));
}

TEST_F(KeystrokeCaptureTest, KeysOfAFailedInsertAreGone)
{
    startCounting();
    store().exec("CREATE TRIGGER refuse BEFORE INSERT ON keystrokes "
                 "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    machine.keyCounting.press(5);
    machine.runFor(59);
    store().exec("DROP TRIGGER refuse");
    machine.keyCounting.press(1);
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), ElementsAre("120|Unknown|english|1"));
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控...", "00:00:01 ⌨️ OK",
            "00:01:00 ⚠️ 插入击键数据失败: refused"));
}

TEST_F(KeystrokeCaptureTest, KeysOfAStatementThatCannotBePreparedAreGone)
{
    startCounting();
    store().exec("ALTER TABLE keystrokes RENAME TO elsewhere");
    machine.keyCounting.press(5);
    machine.runFor(59); // the statement is still prepared by what the connection knew
    machine.keyCounting.press(5);
    machine.runFor(60);
    store().exec("ALTER TABLE elsewhere RENAME TO keystrokes");
    machine.runFor(60);
    EXPECT_THAT(keystrokes(), IsEmpty());
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控...", "00:00:01 ⌨️ OK",
            "00:01:00 ⚠️ 插入击键数据失败: no such table: keystrokes",
            "00:02:00 ⚠️ SQL 准备失败: no such table: keystrokes"));
}

struct Classified {
    const char* identifier; // nullptr: no input source
    const char* inputMethod;
};

class InputMethodTest : public KeystrokeCaptureTest,
                        public testing::WithParamInterface<Classified> {};

TEST_P(InputMethodTest, TheFirstTextOfTheTableSettlesTheClass)
{
    const auto& [identifier, inputMethod] = GetParam();
    startCounting();
    machine.keyCounting.press(1);
    machine.inputSource.choose(
        identifier != nullptr ? std::optional<std::string>(identifier) : std::nullopt);
    machine.runFor(59);
    EXPECT_THAT(
        store().rows("SELECT input_method FROM keystrokes"), ElementsAre(std::string(inputMethod)));
}

INSTANTIATE_TEST_SUITE_P(Identifiers, InputMethodTest,
    testing::Values(Classified{nullptr, "other"}, Classified{"", "other"},
        Classified{"com.apple.inputmethod.Kotoeri", "other"},
        Classified{"com.apple.keylayout.ABC", "english"},
        Classified{"COM.APPLE.KEYLAYOUT.ABC", "english"},
        Classified{"xkb.keylayout.cn.altgr-pinyin", "english"},
        Classified{"com.apple.inputmethod.SCIM.ITABC", "quanpin"},
        Classified{"com.apple.inputmethod.SCIM.Shuangpin", "shuangpin"},
        Classified{"com.apple.keylayout.Shuangpin", "shuangpin"},
        Classified{"org.example.双拼", "shuangpin"}, Classified{"org.scim.table", "quanpin"},
        Classified{"ibus.libpinyin", "quanpin"}, Classified{"org.example.拼音", "quanpin"},
        Classified{"ibus.table:wubi-jidian86", "quanpin"},
        Classified{"fcitx5.wbx.五笔字型.五笔字型", "quanpin"},
        Classified{"com.Sogou.inputmethod", "quanpin"}, Classified{"搜狗输入法", "quanpin"},
        Classified{"com.Baidu.inputmethod", "quanpin"},
        Classified{"im.rime.inputmethod.Squirrel", "quanpin"}, Classified{"鼠须管", "quanpin"}));

TEST_F(KeystrokeCaptureTest, TheInputMethodIsThatOfTheFlush)
{
    machine.inputSource.choose("com.apple.inputmethod.SCIM.ITABC");
    startCounting();
    machine.keyCounting.press(40);
    machine.inputSource.choose("com.apple.keylayout.ABC");
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|40"));
}

TEST_F(KeystrokeCaptureTest, KeysThatComeWhileTheClassIsAskedForAreCounted)
{
    startCounting();
    machine.keyCounting.press(5);
    machine.inputSource.onAsked([this] { machine.keyCounting.press(3); });
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|8"));
}

TEST_F(KeystrokeCaptureTest, WithoutThePermissionNothingIsCountedUntilTheNextStart)
{
    machine.accessibility.setTrusted(false);
    startCounting();
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⚠️ 辅助功能权限未授权，跳过键盘监控",
            "00:00:00 💡 请前往 系统设置 → 隐私与安全性 → 辅助功能 中开启 Quillbrook"));
    EXPECT_TRUE(std::holds_alternative<PromptCall>(machine.calls.all().front().what));
    EXPECT_THAT(launches(),
        ElementsAre("0|/usr/bin/osascript|display notification \"请在 系统设置 → 隐私与安全性 → "
                    "辅助功能 中开启 Quillbrook，以启用键盘输入统计\" with title "
                    "\"Quillbrook 键盘监控未启用\""));
    machine.accessibility.setTrusted(true);
    machine.keyCounting.press(5);
    machine.runFor(3600);
    EXPECT_THAT(keystrokes(), IsEmpty());
    stop();
    startCounting();
    machine.keyCounting.press(5);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), testing::SizeIs(1));
}

TEST_F(KeystrokeCaptureTest, TheMonitorIsAskedForWithoutAnotherLookAtThePermission)
{
    start();
    machine.accessibility.setTrusted(false);
    machine.runFor(1);
    machine.keyCounting.press(2);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|2"));
}

TEST_F(KeystrokeCaptureTest, AnEngineStoppedWithinTheFirstSecondSetsNothingUp)
{
    start();
    engine->stop();
    machine.runFor(1);
    EXPECT_THAT(keyLines(), ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控..."));
}

TEST_F(KeystrokeCaptureTest, WithoutAMonitorTheTapCounts)
{
    machine.keyCounting.setGivesMonitors(false);
    startCounting();
    machine.keyCounting.press(6);
    machine.runFor(59);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|6"));
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控...",
            "00:00:01 ⚠️ NSEvent 全局监听失败，尝试 CGEvent.tapCreate...",
            "00:00:01 ⌨️ OK"));
    EXPECT_THAT(launches(), IsEmpty());
    EXPECT_THAT(tapSwitches(), ElementsAre(true));
    stop();
    EXPECT_THAT(tapSwitches(), ElementsAre(true, false));
}

TEST_F(KeystrokeCaptureTest, TheMonitorIsNotSwitchedOffByStop)
{
    startCounting();
    stop();
    EXPECT_THAT(tapSwitches(), IsEmpty());
}

TEST_F(KeystrokeCaptureTest, ATapThatComesLateIsOkAllTheSame)
{
    refuseMonitorAndTap();
    startCounting();
    machine.keyCounting.setGivesTaps(true);
    machine.runFor(10);
    machine.keyCounting.press(3);
    machine.runFor(49);
    EXPECT_THAT(keystrokes(), ElementsAre("60|Unknown|english|3"));
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控...",
            "00:00:01 ⚠️ NSEvent 全局监听失败，尝试 CGEvent.tapCreate...",
            "00:00:01 ⚠️ tapCreate 失败（第1次），10s 后重试", "00:00:11 ⌨️ OK"));
}

TEST_F(KeystrokeCaptureTest, TheThirdFailureUnderAGrantedPermissionResetsItAndEndsTheTries)
{
    refuseMonitorAndTap();
    startCounting();
    machine.runFor(3600);
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控...",
            "00:00:01 ⚠️ NSEvent 全局监听失败，尝试 CGEvent.tapCreate...",
            "00:00:01 ⚠️ tapCreate 失败（第1次），10s 后重试",
            "00:00:11 ⚠️ tapCreate 失败（第2次），30s 后重试",
            "00:00:41 ⚠️ tapCreate 失败（第3次），60s 后重试",
            "00:00:41 🔧 TCC 权限失效，尝试自动重置...", "00:00:41 🔧 TCC 重置完成 (exit: 0)"));
    EXPECT_THAT(launches(),
        ElementsAre(std::string("1|/usr/bin/osascript|display notification \"") + kTapWarning
                + "\" with title \"Quillbrook 键盘监控异常\"",
            "41|/usr/bin/tccutil|cn.tarnlow.quillbrook"));
    const auto& reset = std::get<LaunchCall>(machine.calls.all()[1].what);
    EXPECT_THAT(reset.arguments, ElementsAre("reset", "Accessibility", "cn.tarnlow.quillbrook"));
    EXPECT_TRUE(reset.isWaitedFor);
}

TEST_F(KeystrokeCaptureTest, AResetThatFailsAsksForAnAdministrator)
{
    refuseMonitorAndTap();
    machine.childProcess.install("/usr/bin/tccutil", FinishedProcess{.exitStatus = 70});
    machine.childProcess.install("/usr/bin/osascript", FinishedProcess{.exitStatus = 1});
    startCounting();
    machine.runFor(40);
    EXPECT_THAT(launches().back(),
        "41|/usr/bin/osascript|do shell script \"tccutil reset Accessibility "
        "cn.tarnlow.quillbrook\" with administrator privileges");
    EXPECT_THAT(keyLines().back(), "00:00:41 🔧 TCC 重置完成 (exit: 70)");
}

TEST_F(KeystrokeCaptureTest, AnAdministratorToolThatIsMissingIsIgnored)
{
    refuseMonitorAndTap();
    machine.childProcess.install("/usr/bin/tccutil", FinishedProcess{.exitStatus = 70});
    startCounting();
    machine.childProcess.uninstall("/usr/bin/osascript");
    machine.runFor(40);
    EXPECT_THAT(keyLines().back(), "00:00:41 🔧 TCC 重置完成 (exit: 70)");
}

TEST_F(KeystrokeCaptureTest, AResetThatCannotBeLaunchedIsALine)
{
    refuseMonitorAndTap();
    machine.childProcess.uninstall("/usr/bin/tccutil");
    startCounting();
    machine.runFor(40);
    EXPECT_THAT(keyLines().back(), "00:00:41 ⚠️ TCC 重置失败: not found: /usr/bin/tccutil");
    EXPECT_THAT(launches().back(), "41|/usr/bin/tccutil|cn.tarnlow.quillbrook");
}

TEST_F(KeystrokeCaptureTest, APermissionLostBetweenTwoTriesEndsThem)
{
    refuseMonitorAndTap();
    startCounting();
    machine.accessibility.setTrusted(false);
    machine.runFor(10);
    machine.accessibility.setTrusted(true);
    machine.keyCounting.setGivesTaps(true);
    machine.runFor(3600);
    EXPECT_THAT(
        keyLines().back(), "00:00:11 ⚠️ tryCreateKeyTap: 进程已停止或权限丢失");
}

TEST_F(KeystrokeCaptureTest, AnEngineThatStoppedBetweenTwoTriesEndsThem)
{
    refuseMonitorAndTap();
    startCounting();
    testing::internal::CaptureStdout();
    engine->stop();
    machine.runFor(10);
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
        EndsWith("⚠️ tryCreateKeyTap: 进程已停止或权限丢失\n"));
}

TEST_F(KeystrokeCaptureTest, APermissionLostWithinATryLetsTheLadderGoOn)
{
    // The answer changes between a try's first step and its last: asked at 41 s, 101 s, ... the
    // permission is there, and gone once the tap was refused.
    refuseMonitorAndTap();
    machine.keyCounting.onTapRefused([this] { machine.accessibility.setTrusted(false); });
    startCounting();
    for (const double pauseSec : {10.0, 30.0, 60.0, 300.0, 300.0}) {
        machine.accessibility.setTrusted(true);
        machine.runFor(pauseSec);
    }
    EXPECT_THAT(keyLines(),
        ElementsAre("00:00:00 ⌨️ 已授权，启动键盘监控...",
            "00:00:01 ⚠️ NSEvent 全局监听失败，尝试 CGEvent.tapCreate...",
            "00:00:01 ⚠️ tapCreate 失败（第1次），10s 后重试",
            "00:00:11 ⚠️ tapCreate 失败（第2次），30s 后重试",
            "00:00:41 ⚠️ tapCreate 失败（第3次），60s 后重试",
            "00:01:41 ⚠️ tapCreate 失败（第4次），300s 后重试",
            "00:06:41 ⚠️ tapCreate 失败（第5次），300s 后重试",
            "00:11:41 ⚠️ tapCreate 失败（第6次），300s 后重试"));
}

TEST_F(KeystrokeCaptureTest, ANotificationThatCannotBeLaunchedIsALine)
{
    machine.accessibility.setTrusted(false);
    machine.childProcess.uninstall("/usr/bin/osascript");
    start();
    EXPECT_THAT(
        keyLines().back(), "00:00:00 ⚠️ 通知发送失败: not found: /usr/bin/osascript");
}

} // namespace
} // namespace quillbrook
