#pragma once

#include "pages/marks/Mark.h"

#include <optional>
#include <string>

namespace quillbrook {

/// A column of a table.
struct TableColumn {
    std::string title{};
    int width = 0; // points, without the gaps at its sides
    TextAlignment alignment = TextAlignment::leading;
    bool takesTheRest = false; // grows to what is left of the table's width
    bool namesTheRow = false; // its text is what screen readers call the row

    bool operator==(const TableColumn&) const = default;
};

/// A dot in front of a cell's text.
struct TableDot {
    int diameter = 8;
    Tint tint{};

    bool operator==(const TableDot&) const = default;
};

/// What a cell of a table shows.
struct TableCell {
    std::string text{};
    TextFace face{};
    Tint tint{};
    std::optional<TableDot> dot{};

    bool operator==(const TableCell&) const = default;
};

} // namespace quillbrook
