#pragma once

#include "platform/Platform.h"

#include <functional>
#include <memory>

class QWidget;

namespace quillbrook {

class AboutPanelView;
class Application;

/// Opens the about panel. Main thread only; needs the application object.
class AboutPanelController {
public:
    /// `quit` ends the program, as Ctrl+Q does in each of its windows.
    AboutPanelController(
        const Platform& platform, Application& application, std::function<void()> quit = [] {});
    ~AboutPanelController();

    AboutPanelController(const AboutPanelController&) = delete;
    AboutPanelController& operator=(const AboutPanelController&) = delete;

    /// Brings the panel to the front when it is open, else makes it anew with the values that the
    /// package has now.
    void show();

    /// The panel; null until it is first shown, and kept when it is closed.
    QWidget* shownWindow() const;

private:
    void makeWindow();

    Platform platform;
    Application& application;
    std::function<void()> quit;
    std::unique_ptr<AboutPanelView> aboutWindow;
};

} // namespace quillbrook
