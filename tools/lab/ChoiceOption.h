#pragma once

#include <string_view>

namespace quillbrook::lab {

class Arguments;

/// Whether an option has the word `yes`; the default without it. Ends the program when it has
/// neither `yes` nor `no`.
bool choiceOption(const Arguments& arguments, std::string_view name, std::string_view yes,
    std::string_view no, bool isDefault);

} // namespace quillbrook::lab
