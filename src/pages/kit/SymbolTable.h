#pragma once

#include <span>
#include <string_view>

namespace quillbrook {

/// A symbol's drawing, as steps separated by "|". A step is a letter and a path:
/// "s" adds the path as a stroke, "f" adds its area, "c" cuts the stroke out of what is there, "x"
/// cuts the area out. A path is made of M, L, H, V, C and Z with absolute coordinates, as in SVG,
/// and of "O cx cy r" for a circle, "R x y w h r" for a rectangle with round corners and
/// "A cx cy r start sweep" for an arc in degrees, counter-clockwise from three o'clock.
struct SymbolDrawing {
    std::string_view name;
    std::string_view steps;
};

/// In alphabetical order of the names.
std::span<const SymbolDrawing> symbolTable();

} // namespace quillbrook
