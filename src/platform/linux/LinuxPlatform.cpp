#include "platform/linux/LinuxPlatform.h"

#include "base/PrivateFiles.h"
#include "keycounter/keyboards/KeyCounterNames.h"
#include "platform/linux/LinuxAppearance.h"
#include "platform/linux/LinuxBundleValues.h"
#include "platform/linux/LinuxChildProcess.h"
#include "platform/linux/LinuxHostFacts.h"
#include "platform/linux/LinuxInputSource.h"
#include "platform/linux/LinuxKeys.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/WaylandSession.h"
#include "platform/linux/X11Session.h"
#include "platform/linux/applications/AutostartLoginItem.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusInstance.h"
#include "platform/linux/bus/BusPermissionGuide.h"
#include "platform/linux/bus/Logind.h"
#include "platform/linux/bus/NotificationIcon.h"
#include "platform/linux/bus/Notifications.h"
#include "platform/linux/bus/PortalLinks.h"
#include "platform/linux/bus/ScreenSaverSignals.h"
#include "platform/linux/bus/SilentServices.h"
#include "platform/linux/gnome/MutterScreens.h"
#include "platform/linux/gnome/ShellExtension.h"
#include "platform/linux/gnome/ShellExtensionSwitch.h"
#include "platform/linux/proc/ProcIdleMemory.h"
#include "platform/linux/proc/ProcKernelFigures.h"
#include "platform/linux/sleep/BelatedClock.h"
#include "platform/linux/sleep/KernelTime.h"
#include "platform/linux/sleep/ScreensAsleep.h"
#include "platform/linux/sleep/SleepWatch.h"
#include "platform/linux/sleep/WatchedMainLoop.h"
#include "platform/linux/sound/CanberraSound.h"
#include "platform/linux/surroundings/WritableDirectory.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/StderrNotices.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XWayland.h"
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

/// The keys of the session, which also lead the input source to ask anew.
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
                .lockedChanged = screens.teller(ScreenSource::sessionLock)})
    {
    }

    /// The display of the session: a compositor, also where only the X server that is its guest
    /// shows that there is one, else the X server.
    std::unique_ptr<DisplaySession> openDisplay()
    {
        if (isOnCompositor || isXWayland(x11)) {
            return std::make_unique<WaylandSession>(
                entries, mainLoop, screens, sessionBus, extension);
        }
        return std::make_unique<X11Session>(x11, entries, mainLoop, screens);
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

    DesktopEntries entries{DesktopEntries::standardDirectories(), languageKeys(messageLocale())};
    LinuxWorkspace workspace{[this] { return display->frontmostApplication(); }};
    SleepWatch sleepWatch{clock, kernelTime,
        {.willSleep = [this] { workspace.notify(WorkspaceNotification::willSleep); },
            .didWake = [this] { workspace.notify(WorkspaceNotification::didWake); }}};
    WatchedMainLoop watchedMainLoop{mainLoop, sleepWatch};
    ScreensAsleep screens{[this](bool areAsleep) {
        workspace.notify(areAsleep ? WorkspaceNotification::screensDidSleep
                                   : WorkspaceNotification::screensDidWake);
    }};
    Bus sessionBus{Bus::Kind::session, mainLoop, workQueues};
    Bus systemBus{Bus::Kind::system, mainLoop, workQueues};

    ShellExtension extension{BusInstance::connection()};
    ShellExtensionSwitch extensionSwitch{sessionBus, ShellExtensionSwitch::standardFolders()};
    bool isOnCompositor = WaylandConnection::isCompositorThere();
    X11Connection x11{isOnCompositor ? OpensX11::no : OpensX11::yes};
    std::unique_ptr<DisplaySession> display{openDisplay()};
    CanberraSound systemSound{x11};

    ScreenSaverSignals desktopSaver{sessionBus, screens.teller(ScreenSource::desktopSaver)};
    MutterScreens mutterScreens{sessionBus, screens.teller(ScreenSource::desktopPower)};
    Logind logind;

    LinuxAppearance appearance{sessionBus, x11, mainLoop};
    LinuxKeys keys{x11, systemBus, mainLoop};
    LinuxInputSource inputSource{sessionBus, *display, mainLoop, workQueues};
    FollowedKeyCounting keyCounting{keys.counting(), inputSource};
    Notifications notifications{sessionBus};
    PortalLinks links{sessionBus};
    LinuxChildProcess childProcess{notifications};
    BusPermissionGuide permissionGuide{
        sessionBus, systemBus, KeyCounterNames::kService, bundleValues.bundlePath()};
};

LinuxPlatform::LinuxPlatform(std::function<void()> willShutDown)
    : parts(std::make_unique<Parts>(std::move(willShutDown)))
{
    takeFromOthers(parts->userDefaults.directory());
    if (const auto data = parts->directories.dataDirectory()) {
        tellWritingFaults(*data, parts->userDefaults.directory());
    }
}

LinuxPlatform::~LinuxPlatform() = default;

void LinuxPlatform::setIcon(const QImage& picture)
{
    parts->notifications.setIcon(notificationIcon(picture));
}

void LinuxPlatform::whenTrayAnswers(std::function<void()> body)
{
    quillbrook::whenTrayAnswers(parts->mainLoop, parts->workQueues, std::move(body));
}

void LinuxPlatform::whenSessionBusIsThere(std::function<void()> body)
{
    parts->sessionBus.whenThere([body = std::move(body)](const QDBusConnection&) { body(); });
}

void preferNativeWindows()
{
    constexpr const char* kChoice = "QT_QPA_PLATFORM";
    if (std::getenv(kChoice) != nullptr) {
        return;
    }
    const bool isCompositorThere = WaylandConnection::isCompositorThere();
    const bool isNamed = !WaylandConnection::socketOfSession().empty();
    if (isNamed && !isCompositorThere && std::getenv("DISPLAY") != nullptr) {
        notice("Wayland 合成器没有应答，使用 X 服务器");
    }
    setenv(kChoice, isCompositorThere ? "wayland;xcb" : "xcb", 1);
}

Platform LinuxPlatform::platform()
{
    return {.clock = parts->clock,
        .mainLoop = parts->watchedMainLoop,
        .workQueues = parts->workQueues,
        .workspace = parts->workspace,
        .humanInput = *parts->display,
        .accessibility = parts->keys.accessibility(),
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
        .windowActivation = *parts->display,
        .systemSound = parts->systemSound,
        .permissionGuide = parts->permissionGuide,
        .panelItem = parts->extension,
        .desktopExtension = parts->extensionSwitch};
}

} // namespace quillbrook
