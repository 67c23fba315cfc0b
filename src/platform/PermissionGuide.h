#pragma once

#include <cstdint>

namespace quillbrook {

/// Who gives the program its permission to count keys.
enum class PermissionGiver : std::uint8_t {
    systemSettings, ///< the user, with a switch in the system's settings
    counterService, ///< a service of the system, which counts in the program's place
};

/// What helps a person who wants to give the permission to count keys. Nothing of it blocks, and a
/// failure is at most a notice. Main thread only.
class PermissionGuide {
public:
    virtual ~PermissionGuide() = default;

    virtual PermissionGiver giver() const = 0;

    /// Opens the place where the permission is given. Linux: has the counter service started, where
    /// it is installed. macOS: opens in the system settings
    /// "x-apple.systempreferences:com.apple.settings.PrivacySecurity.manage?Privacy_Accessibility",
    /// or where no URL can be made of that,
    /// "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility".
    virtual void openSettings() = 0;

    /// Shows where the program lies. macOS: the workspace's file viewer, with no file selected and
    /// the main bundle's path as its root; Linux: the program's file in the file manager.
    virtual void revealProgram() = 0;
};

} // namespace quillbrook
