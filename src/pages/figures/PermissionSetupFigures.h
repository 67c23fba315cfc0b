#pragma once

#include "base/SystemColor.h"
#include "pages/marks/Mark.h"
#include "permission/PermissionState.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quillbrook {

/// One permission, and whether it is there.
struct PermissionRow {
    std::string icon{};
    SystemColor iconColor = SystemColor::blue;
    std::string title{};
    std::string subtitle{};
    bool isRequired = false;
    bool isGranted = false;
};

/// A permission's row, `kPermissionRowHeight` high, from `top` on and over the whole width.
std::vector<Mark> permissionRowMarks(
    const PermissionRow& row, double top, double width, const TextWidth& textWidth);

constexpr double kPermissionRowHeight = 55; // 35 between paddings of 10

/// What stands above the buttons: the head, a warning after an update that found a grant, the
/// permission's row and two notes.
std::vector<Mark> permissionSetupMarks(
    const PermissionState& state, double width, const TextWidth& textWidth);

/// The height of that picture.
double permissionSetupHeight(const PermissionState& state);

/// What a button of the set-up does.
enum class SetupAction : std::uint8_t { resetPermission, openSettings, revealProgram, goOn };

struct SetupButton {
    SetupAction action = SetupAction::goOn;
    std::string symbol{}; // empty for none
    std::string text{};
    std::string hint{}; // the line under it; empty for none

    bool operator==(const SetupButton&) const = default;
};

/// What can be done now.
struct SetupActions {
    std::string confirmation{}; // in green above the buttons; empty for none
    std::vector<SetupButton> buttons{}; // never none; the first leads on
    std::string skip{}; // the button to go on without the permission; empty for none
};

SetupActions setupActions(const PermissionState& state);

} // namespace quillbrook
