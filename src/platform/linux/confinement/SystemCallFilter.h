#pragma once

#include <cstdint>

namespace quillbrook {

/// Which sockets a process may make.
enum class Sockets : std::uint8_t {
    local, ///< none but those between the programs of this machine
    all,
};

/// Lets the kernel refuse what a recorder has no need of to this process, to all its threads and to
/// whatever it starts, for good: sockets beyond `sockets`, a look into other processes, file
/// systems, the kernel's own parts, its keys, name spaces. What is refused fails, and nobody dies
/// of it. Done twice, both hold. False where the kernel has no such filters.
bool forbidSystemCalls(Sockets sockets);

} // namespace quillbrook
