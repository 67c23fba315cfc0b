#pragma once

#include "pages/figures/PermissionSetupFigures.h"
#include "permission/PermissionSetup.h"

#include <QWidget>

#include <functional>

class QVBoxLayout;

namespace quillbrook {

class MarkView;
class PermissionSetupActions;

/// The page before the first recording: tells how things stand with the permission to count keys,
/// leads to it, and lets the user go on. It follows the permission while it is shown. Return
/// presses the button that has the focus, or the one that leads on.
class PermissionSetupView final : public QWidget {
    Q_OBJECT

public:
    /// `onComplete` runs once, when the user goes on.
    PermissionSetupView(const Platform& platform, bool isNewVersion,
        std::function<void()> onComplete, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showState(const PermissionState& state);
    void perform(SetupAction action);

    PermissionSetup setup;
    MarkView* picture;
    QVBoxLayout* column;
    PermissionSetupActions* actions = nullptr; // made anew for each state
    Subscription changes{};
};

} // namespace quillbrook
