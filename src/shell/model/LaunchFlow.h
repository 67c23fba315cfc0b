#pragma once

#include "base/Lifetime.h"
#include "platform/Platform.h"

namespace quillbrook {

class Application;
class CrashReporter;
class LaunchSurfaces;
class MonitorEngine;

/// What happens between the start of the process and the first window, at a reopen, and at the end.
/// Main thread only.
class LaunchFlow {
public:
    /// What the launch sets going. Whoever made the parts keeps them alive.
    struct Parts {
        Application& application;
        LaunchSurfaces& surfaces;
        MonitorEngine& engine;
        CrashReporter& crashReporter;
    };

    LaunchFlow(const Platform& platform, const Parts& parts);

    /// Begins the recording, or shows the set-up window, which comes before it at the first launch,
    /// without the permission, and once after each update. Once for each process.
    void applicationDidFinishLaunching();

    /// The user started the program again while it runs. Always true: the desktop may go on with
    /// what it does itself.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);

    /// Ends the recording, then notes the clean exit. A second call changes nothing.
    void applicationWillTerminate();

private:
    void setupAboutMenuItem();
    void checkTranslocation();
    void showTranslocationAlert();
    void registerLoginItemIfNeeded();
    void startNormalFlow();
    void showPermissionSetup(bool isNewVersion);
    void completePermissionSetup();

    Platform platform;
    Parts parts;

    Lifetime lifetime{};
};

} // namespace quillbrook
