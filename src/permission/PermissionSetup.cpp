#include "permission/PermissionSetup.h"

#include "platform/Accessibility.h"
#include "platform/ChildProcess.h"
#include "platform/MainLoop.h"
#include "platform/UserDefaults.h"

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillbrook {

namespace {

constexpr double kCheckIntervalSec = 2.0;

/// Runs a program to its end; whether it was launched and succeeded.
bool succeeds(
    ChildProcess& processes, const std::string& path, const std::vector<std::string>& arguments)
{
    const auto outcome = processes.run(path, arguments);
    const auto* finished = std::get_if<FinishedProcess>(&outcome);
    return finished != nullptr && finished->exitStatus == 0;
}

} // namespace

PermissionSetup::PermissionSetup(
    const Platform& platform, bool isNewVersion, std::function<void()> onComplete)
    : platform(platform)
    , onComplete(std::move(onComplete))
    , current(PermissionState{.isNewVersion = isNewVersion,
          .isAccessibilityGranted = platform.accessibility.isTrusted(),
          .giver = platform.permissionGuide.giver()})
{
}

void PermissionSetup::startPolling()
{
    checkTimer.emplace();
    scheduleCheck();
}

void PermissionSetup::scheduleCheck()
{
    // One after the other: a timer of the main loop would go on after the set-up, for nothing.
    platform.mainLoop.runAfter(kCheckIntervalSec, checkTimer->whileAlive([this] { check(); }));
}

void PermissionSetup::check()
{
    scheduleCheck();
    const bool isGranted = platform.accessibility.isTrusted();
    platform.mainLoop.post(lifetime.whileAlive([this, isGranted] {
        PermissionState next = state();
        next.isAccessibilityGranted = isGranted;
        if (next != state()) {
            current.set(next);
        }
    }));
}

void PermissionSetup::resetAccessibilityPermission()
{
    if (!resetGrant()) {
        return;
    }
    PermissionState next = state();
    next.didResetTCC = true;
    next.isAccessibilityGranted = false;
    current.set(next);
}

bool PermissionSetup::resetGrant()
{
    ChildProcess& processes = platform.childProcess;
    return succeeds(
               processes, "/usr/bin/tccutil", {"reset", "Accessibility", "cn.tarnlow.quillbrook"})
        || succeeds(processes, "/usr/bin/osascript",
            {"-e",
                R"(do shell script "tccutil reset Accessibility cn.tarnlow.quillbrook" )"
                "with administrator privileges"});
}

void PermissionSetup::openAccessibilitySettings()
{
    platform.permissionGuide.openSettings();
}

void PermissionSetup::revealInFinder()
{
    platform.permissionGuide.revealProgram();
}

void PermissionSetup::goOn()
{
    stopPolling();
    platform.userDefaults.setBool("hasLaunchedBefore", true);
    // Once, however often the button is pressed until the window is gone.
    if (const auto complete = std::exchange(onComplete, nullptr)) {
        complete();
    }
}

} // namespace quillbrook
