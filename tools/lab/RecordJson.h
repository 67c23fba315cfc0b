#pragma once

#include "lab/JsonObject.h"
#include "report/ReportRecords.h"

#include <QByteArray>

#include <vector>

namespace quillbrook::lab {

/// A record as a JSON object, its members in the order of its fields, `id` left out.
JsonObject recordJson(const DashboardData& data);

/// The points of a trend as a JSON list, `id` left out.
QByteArray trendJson(const std::vector<CategoryTrendPoint>& trend);

} // namespace quillbrook::lab
