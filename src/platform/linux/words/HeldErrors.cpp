#include "platform/linux/words/HeldErrors.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace quillbrook {

HeldErrors::HeldErrors()
{
    std::array<int, 2> ends{};
    // Who writes more than it takes must not wait for a reader, who is himself.
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    reader = ends[0];
    trueErrors = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (trueErrors >= 0) {
        dup2(ends[1], STDERR_FILENO);
    }
    close(ends[1]);
}

HeldErrors::~HeldErrors()
{
    const std::string text = take();
    std::fwrite(text.data(), 1, text.size(), stderr);
}

std::string HeldErrors::take()
{
    if (trueErrors >= 0) {
        dup2(trueErrors, STDERR_FILENO);
        close(std::exchange(trueErrors, -1));
    }
    std::string text;
    if (reader >= 0) {
        std::array<char, 4096> part{};
        for (ssize_t size = 0; (size = read(reader, part.data(), part.size())) > 0;) {
            text.append(part.data(), static_cast<std::size_t>(size));
        }
        close(std::exchange(reader, -1));
    }
    return text;
}

} // namespace quillbrook
