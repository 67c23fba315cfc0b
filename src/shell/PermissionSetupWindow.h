#pragma once

#include "pages/kit/Spoken.h"

#include <QWidget>

#include <functional>

namespace quillbrook {

struct Platform;

/// The window before the first recording, in the middle of the screen and of one size.
class PermissionSetupWindow final : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `onComplete` runs once, when the user goes on; not when the window is closed.
    PermissionSetupWindow(
        const Platform& platform, bool isNewVersion, std::function<void()> onComplete);

    QAccessible::Role accessibleRole() const override { return QAccessible::Window; }
};

} // namespace quillbrook
