#pragma once

#include <string>
#include <vector>

namespace quillbrook::lab {

/// Runs `menubar` with the arguments behind its name; the program's exit status.
int menubarCommand(const std::vector<std::string>& texts);

} // namespace quillbrook::lab
