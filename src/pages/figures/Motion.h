#pragma once

namespace quillbrook {

/// How far a motion has come after a share of its time, from 0 to 1: slow at both ends.
double easeInOut(double share);

/// A spring that is let go at 0 and comes to rest at 1.
struct Spring {
    double responseSec = 0.5; // the period of its free swing
    double damping = 0.5; // between 0 and 1: the less, the longer it swings
};

/// Where the spring is after some seconds.
double springPosition(const Spring& spring, double elapsedSec);

/// When the spring is as good as at rest, in seconds.
double springRest(const Spring& spring);

/// A value that swings between two others, for ever.
struct Swing {
    double from = 0;
    double to = 0;
    double startedAt = 0; // seconds since 1970
    double legSec = 1; // the time for one way

    bool isStill() const { return from == to; }
    double at(double now) const;
};

} // namespace quillbrook
