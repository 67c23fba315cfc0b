#pragma once

#include <functional>

namespace quillbrook {

/// Starts the one thread that stays free when the kernel is told what the process may do with
/// files: such rules bind the thread that makes them, and the threads that it starts from then on.
/// False when there can't be a thread. Once, before the rules.
bool startOlderThread();

/// Whether the other threads are bound, so that only the older one can do some things.
bool isOlderThreadThere();

/// Runs `body` on the older thread and returns when it has run; where there is none, on the
/// caller's, as nothing is refused to that. Meant for the few things that need it, each of them
/// short. Any thread; the older one may ask again from within.
void onOlderThread(const std::function<void()>& body);

} // namespace quillbrook
