#pragma once

#include "pages/kit/Spoken.h"

#include <QTimer>
#include <QWidget>

#include <functional>

namespace quillbrook {

class UserDefaults;

/// The dashboard's window: it keeps its frame from run to run, and only hides when it is closed.
class DashboardWindow final : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// Takes `content`, and calls `onClose` each time that the window is closed.
    DashboardWindow(QWidget* content, UserDefaults& userDefaults, std::function<void()> onClose);

    QAccessible::Role accessibleRole() const override { return QAccessible::Window; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void restoreFrame();
    void saveFrame();

    UserDefaults& userDefaults;
    std::function<void()> onClose;
    QTimer frameTimer{}; // runs out when the frame has come to rest
};

} // namespace quillbrook
