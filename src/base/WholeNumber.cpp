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

std::int64_t boundedSum(std::int64_t a, std::int64_t b)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        return b > 0 ? std::numeric_limits<std::int64_t>::max()
                     : std::numeric_limits<std::int64_t>::min();
    }
    return sum;
}

} // namespace quillbrook
