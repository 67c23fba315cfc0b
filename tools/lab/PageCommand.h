#pragma once

#include <string>
#include <vector>

namespace quillbrook::lab {

/// Opens the dashboard off screen on a page and writes what is to be seen there. The exit status.
int pageCommand(const std::vector<std::string>& texts);

} // namespace quillbrook::lab
