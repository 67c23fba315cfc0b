#include "pages/views/PermissionSetupView.h"

#include "pages/kit/BorderedButton.h"
#include "pages/kit/MarkView.h"
#include "pages/views/PermissionSetupActions.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kFoot = 18;

} // namespace

PermissionSetupView::PermissionSetupView(
    const Platform& platform, bool isNewVersion, std::function<void()> onComplete, QWidget* parent)
    : QWidget(parent)
    , setup(platform, isNewVersion, std::move(onComplete))
    , picture(new MarkView("权限"))
    , column(new QVBoxLayout(this))
{
    column->setContentsMargins(0, 0, 0, kFoot);
    column->addWidget(picture);
    showState(setup.state());
    changes = setup.observe([this](const PermissionState& state) { showState(state); });
}

void PermissionSetupView::showState(const PermissionState& state)
{
    picture->setPictureHeight(static_cast<int>(std::ceil(permissionSetupHeight(state))));
    picture->setPicture([state](Size size, const TextWidth& textWidth) {
        return permissionSetupMarks(state, size.width, textWidth);
    });
    if (actions != nullptr) {
        actions->setParent(nullptr);
        actions->deleteLater(); // one of its buttons may be what led here
    }
    actions = new PermissionSetupActions(setupActions(state));
    connect(actions, &PermissionSetupActions::pressed, this, &PermissionSetupView::perform);
    column->addWidget(actions, 1);
    actions->show(); // by itself it would come a turn of the event loop later
    // The focus, which may have been on a button that is gone, is what screen readers follow.
    actions->mainButton().setFocus();
}

void PermissionSetupView::perform(SetupAction action)
{
    switch (action) {
    case SetupAction::resetPermission:
        return setup.resetAccessibilityPermission();
    case SetupAction::openSettings:
        return setup.openAccessibilitySettings();
    case SetupAction::revealProgram:
        return setup.revealInFinder();
    case SetupAction::goOn:
        return setup.goOn();
    }
}

void PermissionSetupView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    setup.startPolling();
}

void PermissionSetupView::hideEvent(QHideEvent* event)
{
    setup.stopPolling();
    QWidget::hideEvent(event);
}

void PermissionSetupView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QWidget::keyPressEvent(event);
        return;
    }
    auto* focused = qobject_cast<QAbstractButton*>(focusWidget());
    (focused != nullptr ? *focused : actions->mainButton()).click();
}

} // namespace quillbrook
