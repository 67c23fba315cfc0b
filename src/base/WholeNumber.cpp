#include "base/WholeNumber.h"

#include <cmath>
#include <limits>

namespace quillbrook {

namespace {

constexpr double kLimit = 9223372036854775808.0; // 2^63

} // namespace

std::int64_t wholeNumber(double value)
{
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

bool isWithinWholeNumbers(double value)
{
    return value >= -kLimit && value < kLimit;
}

} // namespace quillbrook
