#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillbrook {

/// The pages of the dashboard, in their order.
enum class NavTab : std::uint8_t {
    today,
    history,
    habit,
    keylog,
    alerts,
    about,
    life,
    session,
    idles,
    focus
};

enum class HistoryPeriod : std::uint8_t { today, yesterday, week, month, year, all };
enum class KeylogPeriod : std::uint8_t { today, week, month };
enum class TodayPeriod : std::uint8_t { today, yesterday };
enum class HabitPeriod : std::uint8_t { today, yesterday, week, month };
enum class SessionsPeriod : std::uint8_t { hour1, hour6, today, yesterday };
enum class IdlesPeriod : std::uint8_t { hour1, hour6, today, yesterday };
enum class FocusPeriod : std::uint8_t { today, yesterday, week, month, all };
enum class AlertsPeriod : std::uint8_t { week, month, all };

/// A case of `NavTab` or of a period with its raw value, which is its only label: a tab's title, a
/// period's text in the picker, and what is stored and compared.
template <typename T>
struct NamedCase {
    T value;
    std::string_view rawValue;
};

/// All cases of `NavTab` or of a period, in their order.
template <typename T>
inline constexpr auto allCases = nullptr;

template <>
inline constexpr auto allCases<NavTab> = std::to_array<NamedCase<NavTab>>({
    {NavTab::today, "Today"},
    {NavTab::history, "Past"},
    {NavTab::habit, "Habit"},
    {NavTab::keylog, "Tokens"},
    {NavTab::alerts, "Alerts"},
    {NavTab::about, "关于"},
    {NavTab::life, "Future"},
    {NavTab::session, "Sessions"},
    {NavTab::idles, "Idles"},
    {NavTab::focus, "Focus"},
});

template <>
inline constexpr auto allCases<HistoryPeriod> = std::to_array<NamedCase<HistoryPeriod>>({
    {HistoryPeriod::today, "今日"},
    {HistoryPeriod::yesterday, "昨日"},
    {HistoryPeriod::week, "本周"},
    {HistoryPeriod::month, "本月"},
    {HistoryPeriod::year, "本年"},
    {HistoryPeriod::all, "全部"},
});

// This one says "今天" where all others say "今日": it is the text that users and stored values
// have.
template <>
inline constexpr auto allCases<KeylogPeriod> = std::to_array<NamedCase<KeylogPeriod>>({
    {KeylogPeriod::today, "今天"},
    {KeylogPeriod::week, "本周"},
    {KeylogPeriod::month, "本月"},
});

template <>
inline constexpr auto allCases<TodayPeriod> = std::to_array<NamedCase<TodayPeriod>>({
    {TodayPeriod::today, "今日"},
    {TodayPeriod::yesterday, "昨日"},
});

template <>
inline constexpr auto allCases<HabitPeriod> = std::to_array<NamedCase<HabitPeriod>>({
    {HabitPeriod::today, "今日"},
    {HabitPeriod::yesterday, "昨日"},
    {HabitPeriod::week, "本周"},
    {HabitPeriod::month, "本月"},
});

template <>
inline constexpr auto allCases<SessionsPeriod> = std::to_array<NamedCase<SessionsPeriod>>({
    {SessionsPeriod::hour1, "1小时"},
    {SessionsPeriod::hour6, "6小时"},
    {SessionsPeriod::today, "今日"},
    {SessionsPeriod::yesterday, "昨日"},
});

template <>
inline constexpr auto allCases<IdlesPeriod> = std::to_array<NamedCase<IdlesPeriod>>({
    {IdlesPeriod::hour1, "1小时"},
    {IdlesPeriod::hour6, "6小时"},
    {IdlesPeriod::today, "今日"},
    {IdlesPeriod::yesterday, "昨日"},
});

template <>
inline constexpr auto allCases<FocusPeriod> = std::to_array<NamedCase<FocusPeriod>>({
    {FocusPeriod::today, "今日"},
    {FocusPeriod::yesterday, "昨日"},
    {FocusPeriod::week, "本周"},
    {FocusPeriod::month, "本月"},
    {FocusPeriod::all, "全部"},
});

// Alerts are counted in past days, unlike the weeks and months of the other pages.
template <>
inline constexpr auto allCases<AlertsPeriod> = std::to_array<NamedCase<AlertsPeriod>>({
    {AlertsPeriod::week, "过去7天"},
    {AlertsPeriod::month, "过去30天"},
    {AlertsPeriod::all, "全部"},
});

/// The raw value of a case.
template <typename T>
constexpr std::string_view rawValue(T value)
{
    return allCases<T>[static_cast<std::size_t>(value)].rawValue;
}

/// The case with that raw value; empty when there is none.
template <typename T>
constexpr std::optional<T> fromRawValue(std::string_view text)
{
    for (const auto& each : allCases<T>) {
        if (each.rawValue == text) {
            return each.value;
        }
    }
    return std::nullopt;
}

/// What is selected at the moment of a refresh; goes to its worker by value.
struct RefreshContext {
    NavTab tab = NavTab::today;
    TodayPeriod todayPeriod = TodayPeriod::today;
    KeylogPeriod keylogPeriod = KeylogPeriod::today;
    HistoryPeriod historyPeriod = HistoryPeriod::today;
    HabitPeriod habitPeriod = HabitPeriod::today;
    SessionsPeriod sessionsPeriod = SessionsPeriod::hour1;
    IdlesPeriod idlesPeriod = IdlesPeriod::today;
    AlertsPeriod alertsPeriod = AlertsPeriod::week;
    FocusPeriod focusPeriod = FocusPeriod::today;
};

/// Calls `body` with the member of `owner` that holds the period of a tab's page; not for a page
/// without periods. An owner has its members under the names that `RefreshContext` uses.
template <typename Owner, typename Body>
void withPeriod(Owner& owner, NavTab tab, Body body)
{
    switch (tab) {
    case NavTab::today:
        return body(owner.todayPeriod);
    case NavTab::history:
        return body(owner.historyPeriod);
    case NavTab::habit:
        return body(owner.habitPeriod);
    case NavTab::keylog:
        return body(owner.keylogPeriod);
    case NavTab::alerts:
        return body(owner.alertsPeriod);
    case NavTab::session:
        return body(owner.sessionsPeriod);
    case NavTab::idles:
        return body(owner.idlesPeriod);
    case NavTab::focus:
        return body(owner.focusPeriod);
    case NavTab::about:
    case NavTab::life:
        return;
    }
}

} // namespace quillbrook
