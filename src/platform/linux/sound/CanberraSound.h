#pragma once

#include "platform/SystemSound.h"
#include "platform/linux/sound/CanberraThread.h"

#include <deque>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace quillbrook {

class X11Connection;

/// The sounds of the desktop's theme, and the display's bell as the beep. Nothing is opened before
/// the first sound. Main thread only.
class CanberraSound final : public SystemSound {
public:
    explicit CanberraSound(X11Connection& x11);
    ~CanberraSound() override;

    CanberraSound(const CanberraSound&) = delete;
    CanberraSound& operator=(const CanberraSound&) = delete;

    void play(std::string_view name, Answer answer) override;
    void beep() override;

private:
    bool request(std::string_view name);
    void readAnswers();

    X11Connection& x11;
    std::optional<CanberraThread> thread{};
    std::unique_ptr<QSocketNotifier> answers{};
    std::deque<Answer> waiting{}; // for the thread's answers, in their order
};

} // namespace quillbrook
