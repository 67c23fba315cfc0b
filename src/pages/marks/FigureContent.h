#pragma once

#include "base/SystemColor.h"

#include <string>

namespace quillbrook {

/// What a figure card shows.
struct FigureContent {
    std::string symbol{};
    SystemColor color = SystemColor::blue;
    std::string value{};
    std::string title{};

    bool operator==(const FigureContent&) const = default;
};

} // namespace quillbrook
