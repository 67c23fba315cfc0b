#include "platform/linux/sound/CanberraSound.h"

#include "platform/linux/x11/X11Connection.h"

#include <QMetaObject>
#include <QSocketNotifier>

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

namespace quillbrook {

namespace {

/// The names of macOS, by the index of the nearest of `kEventSounds`.
constexpr std::array<std::string_view, std::size(kEventSounds)> kNames = {"Glass", "Ping"};

// A server that lets so many wait is as good as none, and is not to play them all when it wakes up.
constexpr std::size_t kMostWaiting = 4;

} // namespace

CanberraSound::CanberraSound(X11Connection& x11) : x11(x11) {}

CanberraSound::~CanberraSound() = default;

void CanberraSound::play(std::string_view name, Answer answer)
{
    if (!thread) {
        thread.emplace();
        answers = std::make_unique<QSocketNotifier>(thread->socket(), QSocketNotifier::Read);
        QObject::connect(answers.get(), &QSocketNotifier::activated, [this] { readAnswers(); });
    }
    if (request(name)) {
        waiting.push_back(std::move(answer));
    } else {
        QMetaObject::invokeMethod(
            answers.get(), [answer = std::move(answer)] { answer(false); }, Qt::QueuedConnection);
    }
}

bool CanberraSound::request(std::string_view name)
{
    const auto* const found = std::find(kNames.begin(), kNames.end(), name);
    if (found == kNames.end() || waiting.size() >= kMostWaiting) {
        return false;
    }
    const auto index = static_cast<unsigned char>(found - kNames.begin());
    return send(thread->socket(), &index, 1, MSG_NOSIGNAL | MSG_DONTWAIT) == 1;
}

void CanberraSound::readAnswers()
{
    unsigned char isPlayed = 0;
    while (!waiting.empty() && recv(thread->socket(), &isPlayed, 1, MSG_DONTWAIT) == 1) {
        const Answer answer = std::move(waiting.front());
        waiting.pop_front();
        answer(isPlayed == 1);
    }
}

void CanberraSound::beep()
{
    xcb_bell(x11.get(), 0);
    xcb_flush(x11.get());
}

} // namespace quillbrook
