#pragma once

#include <string>
#include <vector>

namespace quillbrook::lab {

/// Runs `quillbrook-lab report` with the arguments behind its name; returns the exit status.
int reportCommand(const std::vector<std::string>& texts);

} // namespace quillbrook::lab
