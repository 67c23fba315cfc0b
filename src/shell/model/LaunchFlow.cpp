#include "shell/model/LaunchFlow.h"

#include "base/Text.h"
#include "engine/MonitorEngine.h"
#include "platform/Accessibility.h"
#include "platform/Application.h"
#include "platform/BundleValues.h"
#include "platform/LoginItem.h"
#include "platform/MainLoop.h"
#include "platform/UserDefaults.h"
#include "shell/model/CrashReporter.h"
#include "shell/model/LaunchSurfaces.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace quillbrook {

namespace {

constexpr double kDashboardDelaySec = 1.2;

void printLine(const std::string& text)
{
    const std::string line = validUtf8(text) + "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

} // namespace

LaunchFlow::LaunchFlow(const Platform& platform, const Parts& parts)
    : platform(platform)
    , parts(parts)
{
}

void LaunchFlow::applicationDidFinishLaunching()
{
    parts.crashReporter.install();
    setupAboutMenuItem();
    checkTranslocation();

    UserDefaults& defaults = platform.userDefaults;
    const bool hasLaunchedBefore = defaults.boolForKey("hasLaunchedBefore");
    const std::string lastVersion = defaults.stringForKey("lastLaunchedVersion");
    const std::string version
        = platform.bundleValues.infoValue("CFBundleShortVersionString").value_or("0.0.0");
    const bool isNewVersion = !lastVersion.empty() && lastVersion != version;
    // A new build can leave a grant that is reported and yet no longer works: an update passes
    // through the set-up window even with the permission given.
    if (hasLaunchedBefore && platform.accessibility.isTrusted() && !isNewVersion) {
        startNormalFlow();
    } else {
        showPermissionSetup(isNewVersion);
    }
    defaults.setString("lastLaunchedVersion", version);
}

bool LaunchFlow::applicationShouldHandleReopen(bool hasVisibleWindows)
{
    if (!hasVisibleWindows) {
        parts.surfaces.showDashboard();
    }
    return true;
}

void LaunchFlow::applicationWillTerminate()
{
    parts.engine.stop();
    parts.crashReporter.markCleanExit();
}

void LaunchFlow::setupAboutMenuItem()
{
    platform.mainLoop.post(lifetime.whileAlive([this] { parts.surfaces.patchAboutMenuItem(); }));
}

void LaunchFlow::checkTranslocation()
{
    if (!platform.bundleValues.bundlePath().starts_with("/Volumes/")) {
        return;
    }
    platform.mainLoop.post(lifetime.whileAlive([this] { showTranslocationAlert(); }));
}

void LaunchFlow::showTranslocationAlert()
{
    const AlertAnswer answer
        = parts.application.runAlert({.message = "请将 Quillbrook 复制到 Applications",
            .informativeText = "检测到您正从 DMG 直接运行 Quillbrook。\n\n"
                               "macOS 可能会在几分钟后卸载 DMG，导致应用崩溃（SIGBUS）。\n\n"
                               "请将 Quillbrook.app 拖入 Applications 文件夹后再打开。",
            .firstButton = "打开 Applications 文件夹",
            .secondButton = "知道了"});
    if (answer == AlertAnswer::firstButton) {
        parts.application.openApplicationsDirectory();
    }
}

void LaunchFlow::registerLoginItemIfNeeded()
{
    if (platform.loginItem.isEnabled()) {
        return;
    }
    if (const auto failure = platform.loginItem.enable()) {
        printLine("⚠️ 开机自启注册失败: " + failure->description);
        return;
    }
    platform.userDefaults.setBool("loginItemRegistered", true);
    printLine("✅ 已注册开机自启（SMAppService）");
}

void LaunchFlow::startNormalFlow()
{
    registerLoginItemIfNeeded();
    parts.engine.start();
    platform.mainLoop.runAfter(
        kDashboardDelaySec, lifetime.whileAlive([this] { parts.surfaces.showDashboard(); }));
}

void LaunchFlow::showPermissionSetup(bool isNewVersion)
{
    parts.surfaces.showPermissionSetup(isNewVersion, lifetime.whileAlive([this] {
        platform.mainLoop.post(lifetime.whileAlive([this] { completePermissionSetup(); }));
    }));
    parts.application.setActivationPolicy(ActivationPolicy::regular);
    parts.application.activate();
}

void LaunchFlow::completePermissionSetup()
{
    parts.surfaces.closePermissionSetup();
    startNormalFlow();
}

} // namespace quillbrook
