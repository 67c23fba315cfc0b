#pragma once

#include "base/Lifetime.h"
#include "platform/linux/session/FrontSource.h"
#include "platform/linux/shells/SwayMessages.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QSocketNotifier;

namespace quillbrook {

class MainLoop;

/// What sway tells by its own socket beside Wayland's protocols: the process of the focused window,
/// the class of a program of X11, and the keyboard's layout. Waits for nobody; a sway that comes
/// later is found. Main thread only.
class Sway {
public:
    /// `socketPath` is where sway listens, empty where there is none; `changed` runs after each
    /// change of the window.
    Sway(MainLoop& mainLoop, std::string socketPath, std::function<void()> changed);
    ~Sway();

    Sway(const Sway&) = delete;
    Sway& operator=(const Sway&) = delete;

    /// Where sway listens, by the environment; empty where there is none.
    static std::string socketOfSession();

    bool isThere() const { return socket >= 0; }

    /// The window that got the focus last, which may be gone.
    const std::optional<FrontWindow>& window() const { return lastWindow; }

    /// The description of the keyboard's layout, if it is known.
    const std::optional<std::string>& layout() const { return lastLayout; }

    /// Asks sway to show the window of this process, wherever it is. False where sway isn't there.
    bool focusOwnWindow();

private:
    void connect();
    void retryLater();
    void send(SwayMessageType type, std::string_view payload);
    void read();
    void handle(const SwayMessage& message);
    void lose();

    MainLoop& mainLoop;
    std::string socketPath;
    std::function<void()> changed;
    int socket = -1;
    SwayReader reader{};
    std::unique_ptr<QSocketNotifier> readable{};
    std::optional<FrontWindow> lastWindow{};
    std::optional<std::string> lastLayout{};

    Lifetime lifetime{};
};

/// The window in front as another source tells it, with what sway knows of the same window besides.
class SwayFront final : public FrontSource {
public:
    SwayFront(const FrontSource& source, const Sway& sway) : source(source), sway(sway) {}

    bool isThere() const override { return source.isThere(); }
    std::optional<FrontWindow> front() const override;

private:
    const FrontSource& source;
    const Sway& sway;
};

} // namespace quillbrook
