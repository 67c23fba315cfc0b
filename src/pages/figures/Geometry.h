#pragma once

namespace quillbrook {

/// Device-independent pixels, as everywhere in the pages.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

struct Point {
    double x = 0;
    double y = 0; // downwards

    bool operator==(const Point&) const = default;
};

struct Rect {
    double x = 0;
    double y = 0; // downwards
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;
};

} // namespace quillbrook
