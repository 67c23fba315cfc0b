#pragma once

#include "platform/PermissionGuide.h"

namespace quillbrook {

/// How things stand with the permission to count keys while the program is set up.
struct PermissionState {
    bool isNewVersion = false; // this launch follows an update
    bool isAccessibilityGranted = false;
    bool didResetTCC = false; // a grant was taken back since the set-up began
    PermissionGiver giver = PermissionGiver::systemSettings;

    bool operator==(const PermissionState&) const = default;
};

} // namespace quillbrook
