#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace quillbrook {

/// The name under which Flatpak or Snap has installed what a process runs, which is the name of its
/// desktop entry; empty for others.
std::string sandboxIdOf(pid_t process);

/// The application's id in the text of the file by which Flatpak describes a sandbox to those in
/// it; empty when there is none.
std::string flatpakIdIn(std::string_view info);

/// The id of the desktop entry of a Snap, from the text of a process's /proc/PID/cgroup:
/// "firefox_firefox" for a group "snap.firefox.firefox-1234.scope"; empty for others.
std::string snapIdIn(std::string_view groups);

} // namespace quillbrook
