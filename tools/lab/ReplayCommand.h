#pragma once

#include <string>
#include <vector>

namespace quillbrook::lab {

/// Drives a real engine through a script on the virtual machine. The exit status.
int replayCommand(const std::vector<std::string>& texts);

} // namespace quillbrook::lab
