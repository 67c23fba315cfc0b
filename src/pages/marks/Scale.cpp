#include "pages/marks/Scale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillbrook {

namespace {

constexpr int kMostMarks = 6;
constexpr double kLeastDomain = 1e-200; // below it powers of ten lose their digits
constexpr double kGreatestDomain = 1e300;

/// Whole multiples of `digit` times a power of ten. A negative power divides, since 3 / 10 is the
/// nearest number to 0.3 and 3 * 0.1 isn't.
double multiple(int times, int digit, int power)
{
    const double count = times * digit;
    const double ten = std::pow(10.0, std::abs(power));
    return power < 0 ? count / ten : count * ten;
}

} // namespace

double pointOf(const Scale& scale, double value)
{
    if (scale.to == scale.from) {
        return scale.start;
    }
    return scale.start + (value - scale.from) / (scale.to - scale.from) * (scale.end - scale.start);
}

double valueAt(const Scale& scale, double point)
{
    if (scale.end == scale.start) {
        return scale.from;
    }
    return scale.from + (point - scale.start) / (scale.end - scale.start) * (scale.to - scale.from);
}

double clampedTo(const Scale& scale, double value)
{
    if (std::isnan(value)) {
        return scale.from;
    }
    return std::clamp(value, std::min(scale.from, scale.to), std::max(scale.from, scale.to));
}

double unitLength(const Scale& scale)
{
    return scale.to == scale.from ? 0
                                  : std::abs((scale.end - scale.start) / (scale.to - scale.from));
}

std::vector<double> automaticMarks(double most)
{
    if (!(most >= kLeastDomain)) {
        return {0};
    }
    const double domain = std::min(most, kGreatestDomain);
    // One tenth of the domain's own power is too fine a step, and five times that power too
    // coarse; the first step between them that makes no more than six marks is the one.
    const int power = static_cast<int>(std::floor(std::log10(domain)));
    for (const int tenth : {-1, 0}) {
        for (const int digit : {1, 2, 5}) {
            if (multiple(kMostMarks, digit, power + tenth) <= domain) {
                continue;
            }
            std::vector<double> marks;
            for (int times = 0; multiple(times, digit, power + tenth) <= domain; ++times) {
                marks.push_back(multiple(times, digit, power + tenth));
            }
            return marks;
        }
    }
    return {0};
}

} // namespace quillbrook
