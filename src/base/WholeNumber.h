#pragma once

#include <cstdint>

namespace quillbrook {

/// `value` with its fraction cut off; the nearest whole number of 64 bits when it lies beyond, 0
/// when it is no number. For figures out of files, which may hold anything.
std::int64_t wholeNumber(double value);

/// Whether `value` with its fraction cut off is a whole number of 64 bits; not when it is no
/// number.
bool isWithinWholeNumbers(double value);

/// The sum, or the nearest whole number of 64 bits when a damaged store's counts exceed all.
std::int64_t boundedSum(std::int64_t a, std::int64_t b);

} // namespace quillbrook
