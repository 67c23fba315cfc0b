#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quillbrook {

/// The ids of all processes that /proc shows.
std::vector<pid_t> runningProcesses();

/// The path of the program that a process runs, without the mark of one that was replaced since;
/// empty when it can't be known.
std::string executableOf(pid_t process);

/// Whether a process is `number` to itself. That of a container has another number inside than
/// outside, and the one inside may be that of a stranger here.
bool knowsItselfAs(pid_t process, pid_t number);

/// How many processes of this user, in this login session, run the program that the caller runs,
/// the caller included.
int instancesOfThisProgram();

} // namespace quillbrook
