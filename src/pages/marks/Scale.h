#pragma once

#include <vector>

namespace quillbrook {

/// A stretch of numbers laid evenly over a stretch of points. Both may run either way: a scale of
/// heights ends above where it starts.
struct Scale {
    double from = 0; // the domain
    double to = 1;
    double start = 0; // points
    double end = 0;

    bool operator==(const Scale&) const = default;
};

/// Where a number lies, in points; beyond the domain the scale goes on. All lies at the start when
/// the domain has no length.
double pointOf(const Scale& scale, double value);

/// What number lies at a point; `from` everywhere when the scale has no length.
double valueAt(const Scale& scale, double point);

/// The nearest number of the domain; `from` for what is no number.
double clampedTo(const Scale& scale, double value);

/// How many points one unit of the domain takes, at least 0.
double unitLength(const Scale& scale);

/// Marks for the numbers from 0 to `most`, ascending: three to six of them, 0 first and the last
/// one at most `most`, apart by 1, 2 or 5 times a power of ten. As many as may be. Only 0 when
/// `most` is no positive number.
std::vector<double> automaticMarks(double most);

} // namespace quillbrook
