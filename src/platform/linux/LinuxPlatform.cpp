#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/LinuxAppearance.h"
#include "platform/linux/LinuxBundleValues.h"
#include "platform/linux/LinuxChildProcess.h"
#include "platform/linux/LinuxHostFacts.h"
#include "platform/linux/LinuxInputSource.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/applications/AutostartLoginItem.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusPermissionGuide.h"
#include "platform/linux/bus/Logind.h"
#include "platform/linux/bus/NotificationIcon.h"
#include "platform/linux/bus/Notifications.h"
#include "platform/linux/bus/ScreenSaverSignals.h"
#include "platform/linux/proc/ProcIdleMemory.h"
#include "platform/linux/proc/ProcKernelFigures.h"
#include "platform/linux/sleep/BelatedClock.h"
#include "platform/linux/sleep/KernelTime.h"
#include "platform/linux/sleep/ScreensAsleep.h"
#include "platform/linux/sleep/SleepWatch.h"
#include "platform/linux/sleep/WatchedMainLoop.h"
#include "platform/linux/sound/CanberraSound.h"
#include "platform/linux/words/StderrNotices.h"
#include "platform/linux/x11/FrontApplication.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Dpms.h"
#include "platform/linux/x11/X11HumanInput.h"
#include "platform/linux/x11/X11KeyCounting.h"
#include "platform/linux/x11/X11ScreenLocker.h"
#include "platform/linux/x11/X11ScreenSaver.h"
#include "platform/linux/x11/X11WindowActivation.h"
#include "platform/linux/x11/XScreenSaverStatus.h"
#include "platform/qt/QtDirectories.h"
#include "platform/qt/QtLocaleText.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/qt/QtUserDefaults.h"
#include "platform/qt/QtWorkQueues.h"
#include "platform/qt/SystemClock.h"
#include "platform/qt/SystemTimeZone.h"

#include <cstdlib>
#include <utility>

namespace quillbrook {

namespace {

/// The keys of the display, which also lead the input source to ask anew.
class FollowedKeyCounting final : public KeyCounting {
public:
    FollowedKeyCounting(KeyCounting& keys, LinuxInputSource& inputSource)
        : keys(keys)
        , inputSource(inputSource)
    {
    }

    bool addGlobalMonitor(KeyDownHandler handler) override
    {
        return keys.addGlobalMonitor(followed(std::move(handler)));
    }

    std::unique_ptr<EventTap> createTap(KeyDownHandler handler) override
    {
        return keys.createTap(followed(std::move(handler)));
    }

private:
    KeyDownHandler followed(KeyDownHandler handler)
    {
        return [this, handler = std::move(handler)] {
            handler();
            inputSource.keyWentDown();
        };
    }

    KeyCounting& keys;
    LinuxInputSource& inputSource;
};

/// The user's language for messages.
std::string messageLocale()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

} // namespace

struct LinuxPlatform::Parts {
    explicit Parts(std::function<void()> willShutDown)
        : logind(systemBus, watchedMainLoop,
            {.willSleep = [this] { sleepWatch.sleepAnnounced(); },
                .didWake = [this] { sleepWatch.wakingAnnounced(); },
                .isGone = [this] { sleepWatch.announcerGone(); },
                .willShutDown = std::move(willShutDown),
                .lockedChanged = sourceOf(ScreenSource::sessionLock)})
    {
    }

    std::function<void(bool)> sourceOf(ScreenSource source)
    {
        return [this, source](bool isAsleep) { screens.set(source, isAsleep); };
    }

    SystemClock systemClock{};
    BelatedClock clock{systemClock};
    QtMainLoop mainLoop{};
    QtWorkQueues workQueues{};
    QtUserDefaults userDefaults{};
    QtLocaleText localeText{};
    QtDirectories directories{};
    LinuxBundleValues bundleValues{};
    SystemTimeZone timeZone{};
    LinuxHostFacts hostFacts{};
    ProcIdleMemory idleMemory{};
    StderrNotices notices{};
    AutostartLoginItem loginItem{AutostartLoginItem::ofThisUser(bundleValues.bundlePath())};
    ProcKernelFigures kernelFigures{};

    X11Connection x11{};
    DesktopEntries entries{DesktopEntries::standardDirectories(), languageKeys(messageLocale())};
    FrontApplication front{x11, entries, mainLoop};
    LinuxWorkspace workspace{front};
    X11HumanInput humanInput{x11};
    SleepWatch sleepWatch{clock, kernelTime,
        {.willSleep = [this] { workspace.notify(WorkspaceNotification::willSleep); },
            .didWake = [this] { workspace.notify(WorkspaceNotification::didWake); }}};
    WatchedMainLoop watchedMainLoop{mainLoop, sleepWatch};
    X11WindowActivation windowActivation{x11};
    CanberraSound systemSound{x11};

    Bus sessionBus{Bus::Kind::session, mainLoop, workQueues};
    Bus systemBus{Bus::Kind::system, mainLoop, workQueues};
    ScreensAsleep screens{[this](bool areAsleep) {
        workspace.notify(areAsleep ? WorkspaceNotification::screensDidSleep
                                   : WorkspaceNotification::screensDidWake);
    }};
    X11ScreenSaver serverSaver{x11, sourceOf(ScreenSource::serverSaver)};
    XScreenSaverStatus saverProgram{x11, sourceOf(ScreenSource::xscreensaver)};
    X11ScreenLocker locker{x11, mainLoop, sourceOf(ScreenSource::displayLocker)};
    X11Dpms powerManagement{x11, mainLoop, sourceOf(ScreenSource::powerManagement)};
    ScreenSaverSignals desktopSaver{sessionBus, sourceOf(ScreenSource::desktopSaver)};
    Logind logind;

    LinuxAppearance appearance{sessionBus, x11};
    X11KeyCounting displayKeys{x11};
    X11Accessibility accessibility{displayKeys};
    LinuxInputSource inputSource{sessionBus, x11, mainLoop, workQueues};
    FollowedKeyCounting keyCounting{displayKeys, inputSource};
    Notifications notifications{sessionBus};
    LinuxChildProcess childProcess{notifications};
    BusPermissionGuide permissionGuide{sessionBus, systemBus, bundleValues.bundlePath()};
};

LinuxPlatform::LinuxPlatform(std::function<void()> willShutDown)
    : parts(std::make_unique<Parts>(std::move(willShutDown)))
{
}

LinuxPlatform::~LinuxPlatform() = default;

void LinuxPlatform::setIcon(const QImage& picture)
{
    parts->notifications.setIcon(notificationIcon(picture));
}

Platform LinuxPlatform::platform()
{
    return {.clock = parts->clock,
        .mainLoop = parts->watchedMainLoop,
        .workQueues = parts->workQueues,
        .workspace = parts->workspace,
        .humanInput = parts->humanInput,
        .accessibility = parts->accessibility,
        .keyCounting = parts->keyCounting,
        .inputSource = parts->inputSource,
        .kernelFigures = parts->kernelFigures,
        .childProcess = parts->childProcess,
        .userDefaults = parts->userDefaults,
        .bundleValues = parts->bundleValues,
        .localeText = parts->localeText,
        .directories = parts->directories,
        .loginItem = parts->loginItem,
        .timeZone = parts->timeZone,
        .hostFacts = parts->hostFacts,
        .appearance = parts->appearance,
        .idleMemory = parts->idleMemory,
        .notices = parts->notices,
        .windowActivation = parts->windowActivation,
        .systemSound = parts->systemSound,
        .permissionGuide = parts->permissionGuide};
}

} // namespace quillbrook
