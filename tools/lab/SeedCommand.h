#pragma once

#include <string>
#include <vector>

namespace quillbrook::lab {

/// Runs `quillbrook-lab seed` with the arguments behind its name; returns the exit status.
int seedCommand(const std::vector<std::string>& texts);

} // namespace quillbrook::lab
