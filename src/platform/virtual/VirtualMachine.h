#pragma once

#include "platform/Platform.h"
#include "platform/virtual/OutsideCalls.h"
#include "platform/virtual/VirtualAccessibility.h"
#include "platform/virtual/VirtualAppearance.h"
#include "platform/virtual/VirtualBundleValues.h"
#include "platform/virtual/VirtualChildProcess.h"
#include "platform/virtual/VirtualClock.h"
#include "platform/virtual/VirtualDesktopExtension.h"
#include "platform/virtual/VirtualDirectories.h"
#include "platform/virtual/VirtualHostFacts.h"
#include "platform/virtual/VirtualHumanInput.h"
#include "platform/virtual/VirtualIdleMemory.h"
#include "platform/virtual/VirtualInputSource.h"
#include "platform/virtual/VirtualKernelFigures.h"
#include "platform/virtual/VirtualKeyCounting.h"
#include "platform/virtual/VirtualLocaleText.h"
#include "platform/virtual/VirtualLoginItem.h"
#include "platform/virtual/VirtualMainLoop.h"
#include "platform/virtual/VirtualNotices.h"
#include "platform/virtual/VirtualPanelItem.h"
#include "platform/virtual/VirtualPermissionGuide.h"
#include "platform/virtual/VirtualSystemSound.h"
#include "platform/virtual/VirtualTimeVfs.h"
#include "platform/virtual/VirtualTimeZone.h"
#include "platform/virtual/VirtualUserDefaults.h"
#include "platform/virtual/VirtualWindowActivation.h"
#include "platform/virtual/VirtualWorkQueues.h"
#include "platform/virtual/VirtualWorkspace.h"

#include <filesystem>
#include <string>

namespace quillbrook {

/// A whole computer on which time passes only when told, and people and hardware do what they are
/// told. The real logic runs on it unchanged, with real files. One at a time in a process, as
/// SQLite's 'now' follows its clock.
class VirtualMachine {
public:
    /// A machine at `startsAt`, with the last input at that moment, no application in front, and
    /// the system tools that the logic launches, which succeed and print nothing.
    VirtualMachine(std::filesystem::path dataDirectory, double startsAt);

    Platform platform();

    /// Lets `seconds` pass; what is due at the very end runs too.
    void runFor(double seconds) { mainLoop.runThrough(clock.now() + seconds); }

    void bringToFront(std::string name, std::string bundleIdentifier);

    /// Forgets timers, blocks, observers and key monitors, as the end of the process does. What was
    /// stored stays.
    void endProcess();

    VirtualClock clock;
    OutsideCalls calls{clock};
    VirtualMainLoop mainLoop{clock};
    VirtualWorkQueues workQueues{mainLoop};
    VirtualWorkspace workspace{};
    VirtualHumanInput humanInput{clock};
    VirtualAccessibility accessibility{calls};
    VirtualKeyCounting keyCounting{calls};
    VirtualInputSource inputSource{};
    VirtualKernelFigures kernelFigures{};
    VirtualChildProcess childProcess{calls};
    VirtualUserDefaults userDefaults{};
    VirtualBundleValues bundleValues{};
    VirtualLocaleText localeText{};
    VirtualDirectories directories;
    VirtualLoginItem loginItem{};
    VirtualTimeZone timeZone{};
    VirtualHostFacts hostFacts{};
    VirtualAppearance appearance{};
    VirtualIdleMemory idleMemory{};
    VirtualNotices notices{};
    VirtualWindowActivation windowActivation{};
    VirtualSystemSound systemSound{mainLoop};
    VirtualPermissionGuide permissionGuide{};
    VirtualPanelItem panelItem{};
    VirtualDesktopExtension desktopExtension{};

private:
    VirtualTimeVfs timeVfs{clock};
};

} // namespace quillbrook
