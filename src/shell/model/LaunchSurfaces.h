#pragma once

#include <functional>

namespace quillbrook {

/// What the launch can show. Main thread only.
class LaunchSurfaces {
public:
    virtual ~LaunchSurfaces() = default;

    /// Opens the dashboard or brings it to the front, on the page where it was.
    virtual void showDashboard() = 0;

    /// Opens the set-up window, which calls `onComplete` once, when the user goes on. Closing the
    /// window otherwise calls nothing.
    virtual void showPermissionSetup(bool isNewVersion, std::function<void()> onComplete) = 0;

    /// Closes the set-up window if it is open.
    virtual void closePermissionSetup() = 0;

    /// Lets the about item of the application's menu, where there is one, show our about window.
    virtual void patchAboutMenuItem() = 0;
};

} // namespace quillbrook
