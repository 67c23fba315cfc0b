#pragma once

#include "platform/Application.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace quillbrook {

class WindowActivation;

/// The application object of Qt. Main thread only.
class QtApplication final : public Application {
public:
    /// `styleWindows` runs before a box is shown, which may be the first of all windows.
    QtApplication(WindowActivation& windowActivation, std::function<void()> styleWindows)
        : windowActivation(windowActivation)
        , styleWindows(std::move(styleWindows))
    {
    }

    void setActivationPolicy(ActivationPolicy policy) override;
    void makeKey(std::uint64_t window) override;
    void activate() override;
    AlertAnswer runAlert(const Alert& alert) override;
    void openApplicationsDirectory() override;

    /// As long as the result lives, all that is shown is shown for the launch of `startupId`.
    [[nodiscard]] std::shared_ptr<void> actFor(const std::string& newStartupId);

    /// Whether a window of ours is on the screen, and not minimised. The icon that some trays take
    /// from us is no such window.
    bool hasVisibleWindows() const;

private:
    QWidget* keyWindow() const;
    void bring(QWidget& window);

    WindowActivation& windowActivation;
    std::function<void()> styleWindows;
    QPointer<QWidget> madeKey{};
    std::string startupId{};
};

} // namespace quillbrook
