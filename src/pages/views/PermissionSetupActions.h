#pragma once

#include "pages/figures/PermissionSetupFigures.h"

#include <QWidget>

class QVBoxLayout;

namespace quillbrook {

class BorderedButton;

/// What can be done in one state of the set-up: a confirmation, buttons with their hints, and at
/// the foot the way on without the permission.
class PermissionSetupActions final : public QWidget {
    Q_OBJECT

public:
    explicit PermissionSetupActions(const SetupActions& content, QWidget* parent = nullptr);

    /// The button that leads on.
    BorderedButton& mainButton() const { return *first; }

signals:
    void pressed(quillbrook::SetupAction action);

private:
    void addConfirmation(const QString& text);
    BorderedButton* addButton(const SetupButton& content);
    void addSkip(const QString& text);

    QVBoxLayout* rows;
    BorderedButton* first = nullptr;
};

} // namespace quillbrook
