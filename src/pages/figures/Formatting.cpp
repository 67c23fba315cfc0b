#include "pages/figures/Formatting.h"

#include "base/Fatal.h"
#include "base/WholeNumber.h"

namespace quillbrook {

std::int64_t truncated(double value)
{
    if (!isWithinWholeNumbers(value)) {
        fatal("truncated: no number that 64 bits can hold");
    }
    return static_cast<std::int64_t>(value);
}

std::string hoursAndMinutes(std::int64_t minutes)
{
    if (minutes < 60) {
        return std::to_string(minutes) + "m";
    }
    return std::to_string(minutes / 60) + "h" + std::to_string(minutes % 60) + "m";
}

std::string twoDigits(std::int64_t value)
{
    return (value < 10 ? "0" : "") + std::to_string(value);
}

} // namespace quillbrook
