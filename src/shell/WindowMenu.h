#pragma once

#include <QMenuBar>

#include <functional>

namespace quillbrook {

/// The menu of a window, with which all can be reached without a tray. Its shortcuts work whenever
/// the window is active. Main thread only.
class WindowMenu final : public QMenuBar {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> showAbout{};
        std::function<void()> refresh{};
        std::function<void()> quit{};
    };

    /// A menu for `window`, which owns it.
    WindowMenu(QWidget& window, const Actions& actions);
};

} // namespace quillbrook
