#pragma once

#include "platform/PermissionGuide.h"

namespace quillbrook {

/// A system that gives the permission as told, and counts how often it was asked for help.
class VirtualPermissionGuide final : public PermissionGuide {
public:
    PermissionGiver giver() const override { return presentGiver; }
    void openSettings() override { ++settingsOpenings; }
    void revealProgram() override { ++revelations; }

    void setGiver(PermissionGiver newGiver) { presentGiver = newGiver; }

    int settingsOpeningCount() const { return settingsOpenings; }
    int revelationCount() const { return revelations; }

private:
    PermissionGiver presentGiver = PermissionGiver::systemSettings;
    int settingsOpenings = 0;
    int revelations = 0;
};

} // namespace quillbrook
