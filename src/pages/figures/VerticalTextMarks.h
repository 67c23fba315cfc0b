#pragma once

#include "pages/marks/Mark.h"

#include <span>
#include <string>
#include <vector>

namespace quillbrook {

/// Lines of text as columns, from left to right in the given order, each read as a whole.
std::vector<Mark> verticalTextMarks(std::span<const std::string> lines);

Size verticalTextSize(std::span<const std::string> lines);

} // namespace quillbrook
