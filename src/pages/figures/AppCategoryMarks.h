#pragma once

#include "categories/AppCategoryList.h"
#include "categories/SeedTables.h"
#include "pages/marks/Mark.h"

#include <string>
#include <vector>

namespace quillbrook {

/// The heights of the rows below, each with its divider.
constexpr int kAppRowHeight = 41;
constexpr int kCategoryRowHeight = 43;
constexpr int kCurrentCategoryHeight = 38;

/// An application in the list of all: a tile with its initials, its name and identifier, and its
/// category.
std::vector<Mark> appRowMarks(
    const AppEntry& app, bool isLast, Size size, const TextWidth& textWidth);

/// A category that an application can be put into; marked where the application is in it.
std::vector<Mark> categoryRowMarks(
    const SelectableCategory& category, const AppEntry& app, Size size);

/// What an application's category is at present.
std::vector<Mark> currentCategoryMarks(const AppEntry& app, Size size);

/// What stands above the choice for an application.
std::string pickerTitle(const AppEntry& app);

} // namespace quillbrook
