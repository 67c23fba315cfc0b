#include "base/OlderThread.h"

#include <pthread.h>

#include <condition_variable>
#include <mutex>

namespace quillbrook {

namespace {

/// The thread and what is handed over to it: one thing at a time, for whoever asks next.
class OlderThread {
public:
    bool start()
    {
        const auto serve
            = [](void* itself) -> void* { static_cast<OlderThread*>(itself)->serve(); };
        return pthread_create(&thread, nullptr, serve, this) == 0 && pthread_detach(thread) == 0;
    }

    void run(const std::function<void()>& body)
    {
        if (pthread_equal(pthread_self(), thread) != 0) {
            body();
            return;
        }
        const std::lock_guard turn(turns);
        std::unique_lock lock(handing);
        next = &body;
        changed.notify_all();
        changed.wait(lock, [this] { return next == nullptr; });
    }

private:
    [[noreturn]] void serve()
    {
        std::unique_lock lock(handing);
        for (;;) {
            changed.wait(lock, [this] { return next != nullptr; });
            (*next)();
            next = nullptr;
            changed.notify_all();
        }
    }

    pthread_t thread{};
    std::mutex turns{};
    std::mutex handing{};
    std::condition_variable changed{};
    const std::function<void()>* next = nullptr; // empty again when it has run
};

/// Never destroyed: the process ends with the thread in it, and asks it up to then.
OlderThread*& olderThread()
{
    static OlderThread* thread = nullptr;
    return thread;
}

} // namespace

bool startOlderThread()
{
    auto* thread = new OlderThread;
    if (!thread->start()) {
        delete thread;
        return false;
    }
    olderThread() = thread;
    return true;
}

bool isOlderThreadThere()
{
    return olderThread() != nullptr;
}

void onOlderThread(const std::function<void()>& body)
{
    if (OlderThread* const thread = olderThread()) {
        thread->run(body);
    } else {
        body();
    }
}

} // namespace quillbrook
