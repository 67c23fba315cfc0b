#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

namespace quillbrook {

/// The wait status of a child that runs `body` and ends with what it returns: what a process takes
/// from itself is taken for good.
inline int statusInChild(const std::function<int()>& body)
{
    const pid_t child = fork();
    if (child == 0) {
        // An exception ends the child, too, and doesn't lead on into other tests.
        [&]() noexcept { _exit(body()); }();
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

/// What `body` returns in a child; -1 when the child died of a signal.
inline int inChild(const std::function<int()>& body)
{
    const int status = statusInChild(body);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace quillbrook
