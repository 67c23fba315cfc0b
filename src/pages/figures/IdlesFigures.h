#pragma once

#include "pages/figures/LocalCalendar.h"
#include "pages/marks/TableContent.h"
#include "report/ReportRecords.h"

#include <span>
#include <string>
#include <vector>

namespace quillbrook {

/// The open periods, then the ended ones, each newest first.
std::vector<IdleRecord> sortedIdles(const std::vector<IdleRecord>& idles);

/// Seconds of all periods; an open one adds none.
double totalDuration(std::span<const IdleRecord> idles);

/// The sum in the form of a row's length.
std::string totalDurationText(std::span<const IdleRecord> idles);

/// "3 条空闲记录".
std::string idleCountText(std::size_t count);

/// The columns of the table of idle periods.
std::vector<TableColumn> idleColumns();

/// One line of the table of idle periods.
struct IdleRow {
    IdleRecord idle{};
};

/// A cell, by its column from 0 on.
TableCell idleCell(const IdleRow& row, int column, const LocalCalendar& calendar);

} // namespace quillbrook
