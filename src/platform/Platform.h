#pragma once

namespace quillbrook {

class Accessibility;
class BundleValues;
class ChildProcess;
class Clock;
class DesktopAppearance;
class DesktopExtension;
class Directories;
class HostFacts;
class HumanInput;
class IdleMemory;
class InputSource;
class KernelFigures;
class KeyCounting;
class LocaleText;
class LoginItem;
class MainLoop;
class Notices;
class PermissionGuide;
class PanelItem;
class SystemSound;
class TimeZone;
class UserDefaults;
class WindowActivation;
class WorkQueues;
class Workspace;

/// All that the logic asks of the machine. Copied freely; whoever made the parts keeps them alive.
struct Platform {
    const Clock& clock;
    MainLoop& mainLoop;
    WorkQueues& workQueues;
    Workspace& workspace;
    const HumanInput& humanInput;
    Accessibility& accessibility;
    KeyCounting& keyCounting;
    const InputSource& inputSource;
    const KernelFigures& kernelFigures;
    ChildProcess& childProcess;
    UserDefaults& userDefaults;
    const BundleValues& bundleValues;
    const LocaleText& localeText;
    const Directories& directories;
    LoginItem& loginItem;
    const TimeZone& timeZone;
    const HostFacts& hostFacts;
    DesktopAppearance& appearance;
    IdleMemory& idleMemory;
    Notices& notices;
    WindowActivation& windowActivation;
    SystemSound& systemSound;
    PermissionGuide& permissionGuide;
    PanelItem& panelItem;
    DesktopExtension& desktopExtension;
};

} // namespace quillbrook
