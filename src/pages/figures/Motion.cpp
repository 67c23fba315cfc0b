#include "pages/figures/Motion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quillbrook {

double easeInOut(double share)
{
    const double t = std::clamp(share, 0.0, 1.0);
    return t < 0.5 ? 2 * t * t : 1 - 2 * (1 - t) * (1 - t);
}

double springPosition(const Spring& spring, double elapsedSec)
{
    const double t = std::max(elapsedSec, 0.0);
    const double frequency = 2 * std::numbers::pi / spring.responseSec;
    const double decay = spring.damping * frequency;
    const double swing = frequency * std::sqrt(1 - spring.damping * spring.damping);
    return 1 - std::exp(-decay * t) * (std::cos(swing * t) + decay / swing * std::sin(swing * t));
}

double springRest(const Spring& spring)
{
    constexpr double kInvisible = 0.001;
    return -std::log(kInvisible) * spring.responseSec / (2 * std::numbers::pi * spring.damping);
}

double Swing::at(double now) const
{
    const double legs = std::max(now - startedAt, 0.0) / legSec;
    const double share = easeInOut(legs - std::floor(legs));
    const bool isBack = std::fmod(std::floor(legs), 2) != 0;
    return std::lerp(from, to, isBack ? 1 - share : share);
}

} // namespace quillbrook
