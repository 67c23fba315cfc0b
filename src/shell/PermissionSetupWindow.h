#pragma once

#include "platform/Platform.h"

#include <QWidget>

#include <functional>

namespace quillbrook {

/// The window before the first recording: it lets the user go on, with the permission to count keys
/// or without it.
class PermissionSetupWindow final : public QWidget {
    Q_OBJECT

public:
    /// `onComplete` runs once, when the user goes on; not when the window is closed.
    PermissionSetupWindow(const Platform& platform, std::function<void()> onComplete);

private:
    void goOn();

    Platform platform;
    std::function<void()> onComplete;
};

} // namespace quillbrook
