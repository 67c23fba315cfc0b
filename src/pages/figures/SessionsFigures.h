#pragma once

#include "pages/figures/LocalCalendar.h"
#include "pages/marks/TableContent.h"
#include "report/ReportRecords.h"

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// What a filter offers: its text, and the value that passes. An empty value lets all pass.
struct FilterOption {
    std::string_view label{};
    std::string_view value{};
};

inline constexpr auto closeTypeOptions = std::to_array<FilterOption>({
    {"全部", ""},
    {"switch", "switch"},
    {"idle_recover", "idle_recover"},
    {"sleep_recover", "sleep_recover"},
    {"lock_recover", "lock_recover"},
    {"startup", "startup"},
});

inline constexpr auto statusOptions = std::to_array<FilterOption>({
    {"全部", ""},
    {"活跃(active)", "active"},
    {"已关闭(closed)", "closed"},
    {"恢复(recover)", "recover"},
});

/// What is picked; empty for all.
struct SessionsFilter {
    std::string app{}; // stands somewhere in the name, capitals and small letters alike
    std::string closeType{};
    std::string status{};
};

/// Whether `part` stands somewhere in `text` by the rules of the user's language.
using ContainsText = std::function<bool(std::string_view text, std::string_view part)>;

/// The running sessions, then the ended ones, each newest first.
std::vector<SessionDetail> mergedSessions(const std::vector<SessionDetail>& sessions);

/// The merged sessions that pass.
std::vector<SessionDetail> filteredSessions(const std::vector<SessionDetail>& sessions,
    const SessionsFilter& filter, const ContainsText& containsText);

/// The names of all applications, in the order of their bytes.
std::vector<std::string> uniqueApps(std::span<const SessionDetail> sessions);

/// "3 个会话".
std::string sessionCountText(std::size_t count);

/// The columns of the sessions' table.
std::vector<TableColumn> sessionColumns();

/// One line of the sessions' table.
struct SessionRow {
    SessionDetail session{};
};

Tint closeTypeColor(const SessionRow& row);

/// A cell, by its column from 0 on.
TableCell sessionCell(const SessionRow& row, int column, const LocalCalendar& calendar);

} // namespace quillbrook
