#include "base/WholeNumber.h"

#include <cmath>
#include <limits>

namespace quillbrook {

std::int64_t wholeNumber(double value)
{
    constexpr double kLimit = 9223372036854775808.0;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kLimit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    if (value < -kLimit) {
        return std::numeric_limits<std::int64_t>::min();
    }
    return static_cast<std::int64_t>(value);
}

} // namespace quillbrook
