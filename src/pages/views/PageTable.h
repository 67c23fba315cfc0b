#pragma once

#include "pages/views/Page.h"
#include "report/Periods.h"

#include <memory>
#include <span>
#include <string_view>

namespace quillbrook {

/// A page of the dashboard: where it stands, how its row looks and how it is made.
struct PageEntry {
    NavTab tab = NavTab::today;
    std::string_view section{}; // of the sidebar; empty for a page that stands in none
    std::string_view symbol{};
    std::unique_ptr<Page> (*make)(const PageTools& tools, QWidget* parent) = nullptr;
};

/// Every page, those with a section in the order of the sidebar's rows.
std::span<const PageEntry> pageTable();

const PageEntry& pageOf(NavTab tab);

} // namespace quillbrook
