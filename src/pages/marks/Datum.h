#pragma once

#include "pages/marks/Mark.h"

#include <string>
#include <utility>

namespace quillbrook {

/// What a bar, point, slice or sector tells those who don't see it, and those who point at it.
struct Datum {
    std::string name{};
    std::string value{};
    std::string help{};

    bool operator==(const Datum&) const = default;
};

/// The mark of a datum, which is hit within `shape` and painted with nothing yet.
inline Mark dataMark(Shape shape, const Datum& datum)
{
    return {.shape = std::move(shape),
        .role = MarkRole::mark,
        .name = datum.name,
        .value = datum.value,
        .help = datum.help};
}

} // namespace quillbrook
