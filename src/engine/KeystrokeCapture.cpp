#include "engine/KeystrokeCapture.h"

#include "base/Fatal.h"
#include "base/Text.h"
#include "engine/MonitorLog.h"
#include "engine/MonitorStore.h"
#include "engine/Notifier.h"
#include "platform/Accessibility.h"
#include "platform/ChildProcess.h"
#include "platform/Clock.h"
#include "platform/InputSource.h"
#include "platform/LocaleText.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <variant>

namespace quillbrook {

namespace {

constexpr double kSetupDelaySec = 1.0;
constexpr std::array kRetryDelaysSec = {10, 30, 60, 300};
constexpr int kStaleGrantFailures = 3;

struct InputMethodRule {
    std::string_view sought;
    std::string_view inputMethod;
};

/// The first text that an identifier holds settles its class. Shape-based input counts as full
/// pinyin on purpose: there are only four classes.
constexpr std::array kInputMethodRules = {
    InputMethodRule{"Shuangpin", "shuangpin"},
    InputMethodRule{"双拼", "shuangpin"},
    InputMethodRule{"keylayout", "english"},
    InputMethodRule{"SCIM", "quanpin"},
    InputMethodRule{"Pinyin", "quanpin"},
    InputMethodRule{"拼音", "quanpin"},
    InputMethodRule{"Wubi", "quanpin"},
    InputMethodRule{"五笔", "quanpin"},
    InputMethodRule{"sogou", "quanpin"},
    InputMethodRule{"搜狗", "quanpin"},
    InputMethodRule{"baidu", "quanpin"},
    InputMethodRule{"rime", "quanpin"},
    InputMethodRule{"鼠须管", "quanpin"},
};

} // namespace

void KeystrokeCapture::setupKeyTap()
{
    if (!platform.accessibility.isTrusted()) {
        platform.accessibility.promptForTrust();
        log.log("⚠️ 辅助功能权限未授权，跳过键盘监控");
        log.log("💡 请前往 系统设置 → 隐私与安全性 → 辅助功能 中开启 Quillbrook");
        notifier.sendNotification("Quillbrook 键盘监控未启用",
            "请在 系统设置 → 隐私与安全性 → 辅助功能 中开启 Quillbrook，以启用键盘输入统计");
        return;
    }
    log.log("⌨️ 已授权，启动键盘监控...");
    platform.mainLoop.runAfter(kSetupDelaySec, lifetime.whileAlive([this] { start(); }));
}

void KeystrokeCapture::start()
{
    if (isRunning && !tryNSEventMonitor()) {
        log.log("⚠️ NSEvent 全局监听失败，尝试 CGEvent.tapCreate...");
        tryCreateKeyTap();
    }
}

bool KeystrokeCapture::tryNSEventMonitor()
{
    if (!platform.keyCounting.addGlobalMonitor(countingHandler())) {
        return false;
    }
    gKeystrokeCount = 0;
    log.log("⌨️ OK");
    return true;
}

void KeystrokeCapture::tryCreateKeyTap()
{
    if (!isRunning || !platform.accessibility.isTrusted()) {
        log.log("⚠️ tryCreateKeyTap: 进程已停止或权限丢失");
        return;
    }
    keyTap = platform.keyCounting.createTap(countingHandler());
    if (!keyTap) {
        tapFailed();
        return;
    }
    keyTapRetryCount = 0;
    keyTap->enable(true);
    gKeystrokeCount = 0;
    log.log("⌨️ OK");
}

void KeystrokeCapture::tapFailed()
{
    ++keyTapRetryCount;
    const auto step = static_cast<std::size_t>(keyTapRetryCount - 1);
    const int delaySec = kRetryDelaysSec[std::min(step, kRetryDelaysSec.size() - 1)];
    log.log(filled("⚠️ tapCreate 失败（第{}次），{}s 后重试",
        {std::to_string(keyTapRetryCount), std::to_string(delaySec)}));
    if (keyTapRetryCount == 1) {
        notifier.sendNotification("Quillbrook 键盘监控异常",
            "CGEvent.tapCreate 失败。请前往 系统设置 → 隐私与安全性 → 辅助功能，"
            "关闭再重新开启 Quillbrook 权限");
    }
    if (keyTapRetryCount >= kStaleGrantFailures && platform.accessibility.isTrusted()) {
        log.log("🔧 TCC 权限失效，尝试自动重置...");
        resetStaleAccessibilityPermission();
        return;
    }
    platform.mainLoop.runAfter(delaySec, lifetime.whileAlive([this] { tryCreateKeyTap(); }));
}

void KeystrokeCapture::resetStaleAccessibilityPermission()
{
    const auto outcome = platform.childProcess.run(
        "/usr/bin/tccutil", {"reset", "Accessibility", "cn.tarnlow.quillbrook"});
    if (const auto* failure = std::get_if<LaunchFailure>(&outcome)) {
        log.log("⚠️ TCC 重置失败: " + failure->description);
        return;
    }
    const int exitStatus = std::get<FinishedProcess>(outcome).exitStatus;
    if (exitStatus != 0) {
        // The system then asks for an administrator.
        platform.childProcess.run("/usr/bin/osascript",
            {"-e",
                R"(do shell script "tccutil reset Accessibility cn.tarnlow.quillbrook" )"
                "with administrator privileges"});
    }
    log.log(filled("🔧 TCC 重置完成 (exit: {})", {std::to_string(exitStatus)}));
}

KeyCounting::KeyDownHandler KeystrokeCapture::countingHandler()
{
    return lifetime.whileAlive([this] { ++gKeystrokeCount; });
}

std::string_view KeystrokeCapture::classifyInputMethod() const
{
    const auto identifier = platform.inputSource.currentIdentifier();
    if (identifier) {
        for (const InputMethodRule& rule : kInputMethodRules) {
            if (platform.localeText.containsIgnoringCase(*identifier, rule.sought)) {
                return rule.inputMethod;
            }
        }
    }
    return "other";
}

void KeystrokeCapture::flushKeystrokesToDB()
{
    if (gKeystrokeCount < 1) {
        return;
    }
    // All keys of the minute go to the application that is in front now, a system one too.
    const double now = platform.clock.now();
    const auto front = platform.workspace.frontmostApplication();
    const std::string appName = front ? front->localizedName.value_or("Unknown") : "Unknown";
    // Asking for the class may let keys in that waited: it comes before the count is taken.
    const std::string_view inputMethod = classifyInputMethod();
    if (gKeystrokeCount > std::numeric_limits<std::int32_t>::max()) {
        fatal("more keys in a minute than a row can hold");
    }
    store.addKeystrokes(now, appName, inputMethod, static_cast<std::int32_t>(gKeystrokeCount));
    gKeystrokeCount = 0;
}

void KeystrokeCapture::disableTap()
{
    if (keyTap) {
        keyTap->enable(false);
    }
}

} // namespace quillbrook
