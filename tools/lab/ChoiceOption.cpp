#include "lab/ChoiceOption.h"

#include "lab/Arguments.h"

#include <string>

namespace quillbrook::lab {

bool choiceOption(const Arguments& arguments, std::string_view name, std::string_view yes,
    std::string_view no, bool isDefault)
{
    const auto text = arguments.option(name);
    if (!text) {
        return isDefault;
    }
    if (*text != yes && *text != no) {
        arguments.reject(
            name, "'" + *text + "' is neither " + std::string(yes) + " nor " + std::string(no));
    }
    return *text == yes;
}

} // namespace quillbrook::lab
