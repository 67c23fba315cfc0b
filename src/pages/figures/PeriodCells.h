#pragma once

#include "pages/figures/LocalCalendar.h"
#include "pages/marks/TableContent.h"

#include <optional>
#include <string>

namespace quillbrook {

// The cells that the tables of sessions and of idle periods share.

/// The day on which a period began. Today's are quiet, others stand out.
TableCell dateCell(Date startedAt, const LocalCalendar& calendar);

/// "HH:mm:ss" in UTC+8.
TableCell startCell(Date startedAt);

/// The same; "--:--:--" for a period that still runs.
TableCell endCell(std::optional<Date> endedAt);

TableCell durationCell(std::string text);

/// A word in a colour that tells what it is.
TableCell labelCell(std::string text, Tint tint);

} // namespace quillbrook
