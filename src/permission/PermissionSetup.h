#pragma once

#include "base/Lifetime.h"
#include "base/Property.h"
#include "permission/PermissionState.h"
#include "platform/Platform.h"

#include <functional>
#include <optional>

namespace quillbrook {

/// The set-up before the first recording: follows the permission to count keys, leads to the place
/// where it is given, takes a stale grant back, and lets the user go on. Main thread only.
class PermissionSetup {
public:
    /// `onComplete` runs once, when the user goes on.
    PermissionSetup(const Platform& platform, bool isNewVersion, std::function<void()> onComplete);

    const PermissionState& state() const { return current.get(); }

    /// Calls `observer` at each change from now on, while the subscription lives.
    [[nodiscard]] Subscription observe(std::function<void(const PermissionState&)> observer)
    {
        return current.observe(std::move(observer));
    }

    /// Asks every two seconds whether the permission is there, for the first time in two seconds.
    void startPolling();
    void stopPolling() { checkTimer.reset(); }

    /// Takes back what was granted to an earlier version, if need be with an administrator's help,
    /// and waits for it. A reset that fails changes nothing.
    void resetAccessibilityPermission();

    void openAccessibilitySettings();
    void revealInFinder();

    /// Notes that the set-up is done, with or without the permission, and completes it.
    void goOn();

private:
    void scheduleCheck();
    void check();
    bool resetGrant();

    Platform platform;
    std::function<void()> onComplete;
    Property<PermissionState> current;
    Lifetime lifetime{};
    std::optional<Lifetime> checkTimer{}; // its checks run as long as it is there
};

} // namespace quillbrook
