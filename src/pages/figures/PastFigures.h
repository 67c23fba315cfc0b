#pragma once

#include "pages/marks/FigureContent.h"
#include "report/ReportRecords.h"

#include <array>

namespace quillbrook {

/// The four cards of the Past page, from left to right.
std::array<FigureContent, 4> metricCards(const HistoryOverview& overview);

} // namespace quillbrook
