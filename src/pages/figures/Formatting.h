#pragma once

#include <cstdint>
#include <string>

namespace quillbrook {

/// `value` without its fraction. Fatal when it is not finite or beyond 64 bits.
std::int64_t truncated(double value);

/// "1h5m" from 60 minutes on, "42m" below, the numbers without padding.
std::string hoursAndMinutes(std::int64_t minutes);

/// `value` with at least two digits: "07".
std::string twoDigits(std::int64_t value);

} // namespace quillbrook
