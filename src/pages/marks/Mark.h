#pragma once

#include "pages/marks/Geometry.h"
#include "pages/marks/Path.h"
#include "pages/marks/TextFace.h"
#include "pages/marks/Tint.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillbrook {

/// A rectangle, with round corners where `radius` is above 0.
struct Box {
    Rect rect{};
    double radius = 0;

    bool operator==(const Box&) const = default;
};

/// A straight line. One that runs level or upright lands on whole device pixels.
struct StraightLine {
    Point from{};
    Point to{};

    bool operator==(const StraightLine&) const = default;
};

struct Circle {
    Point center{};
    double radius = 0;

    bool operator==(const Circle&) const = default;
};

using Shape = std::variant<Box, StraightLine, Circle, Path>;

struct Stroke {
    Tint tint{};
    double width = 1;

    bool operator==(const Stroke&) const = default;
};

enum class TextAlignment : std::uint8_t { leading, center, trailing };

/// One line of text, at half the height of its place. A text that is too wide for it is drawn
/// smaller, down to `minimumScale`, and is then elided in the middle.
struct TextLine {
    Rect place{};
    std::string text{};
    TextFace face{};
    Tint tint{};
    TextAlignment alignment = TextAlignment::leading;
    double minimumScale = 1;
    bool isOnColor = false; // stands on a coloured ground, and has a shadow that keeps it readable

    bool operator==(const TextLine&) const = default;
};

/// A drawing of the symbol table, centred in its place.
struct SymbolMark {
    Rect place{};
    std::string symbol{};
    Tint tint{};

    bool operator==(const SymbolMark&) const = default;
};

/// What a mark is to those who don't see it.
enum class MarkRole : std::uint8_t {
    none, // decoration: it is painted and nothing else
    text,
    mark, // a bar, block, point or sector of a chart
    cell, // a rectangle of a treemap or of a grid
    row, // an entry of a list, which can be pressed
    button,
};

/// The value of a button that bears the mark of being chosen.
constexpr std::string_view kCheckedValue = "checked";

/// One thing of a picture: what is painted, what a screen reader finds, what a hover tells and
/// what a click hits. The order of a picture's marks is that of drawing and of reading.
struct Mark {
    Shape shape = Box{};
    std::vector<Tint> fills{}; // one layer over the other; none paints nothing
    std::optional<InterfaceColor> ground{}; // mixed with the fills into one opaque layer
    std::vector<Tint> gradient{}; // of a box, from left to right in equal steps; empty for none
    std::optional<Stroke> stroke{};
    std::vector<TextLine> texts{};
    std::vector<SymbolMark> symbols{};
    MarkRole role = MarkRole::none;
    std::string name{}; // whole, never elided
    std::string value{}; // empty when the name says all
    std::string help{}; // what a hover tells; empty for nothing

    bool operator==(const Mark&) const = default;
};

/// The place that a shape takes, without its stroke.
Rect bounds(const Shape& shape);

/// The place that all of a mark takes at most: its shape, stroke, texts and symbols.
Rect reach(const Mark& mark);

/// A text by itself, which is read as it is drawn.
Mark textMark(TextLine line);

/// A line of text with a soft edge, which keeps it readable on a ground of nearly its own colour.
std::vector<TextLine> edgedText(const TextLine& line, Tint edge);

/// A line for the eye alone.
Mark lineMark(Point from, Point to, Tint tint, double width = 1);

/// A filled box for the eye alone.
Mark boxMark(Rect rect, Tint tint, double radius = 0);

} // namespace quillbrook
