#include "tests/report/ReportFixture.h"

#include "categories/CategoryStore.h"
#include "report/CategoryReports.h"
#include "report/KeystrokeReports.h"
#include "report/PeriodFilters.h"
#include "report/SessionReports.h"
#include "report/UsageQueries.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>
#include <utility>

namespace quillbrook {
namespace {

struct Session {
    std::string name{};
    std::string bundle{};
    double start = 0;
    double end = 0;
};

struct Keys {
    double time = 0;
    std::string app{};
    std::string method{};
    std::int64_t count = 0;
};

/// Compares the reports with slow and simple sums over the same rows.
class RandomStoresTest : public ReportFixture {
protected:
    double upTo(double most) { return std::uniform_real_distribution<double>(0, most)(random); }

    template <typename List>
    std::string oneOf(const List& list)
    {
        return list[static_cast<std::size_t>(upTo(static_cast<double>(list.size())))];
    }

    void fill()
    {
        static const std::vector<std::string> kNames
            = {"Editor", "Mail", "Web", "loginwindow", "MyLogin", "Quillbrook", "Paint"};
        static const std::vector<std::string> kBundles
            = {"com.apple.Safari", "com.microsoft.VSCode", "us.zoom.xos", "none.such"};
        static const std::vector<std::string> kMethods
            = {"english", "shuangpin", "quanpin", "other", "wubi"};
        sessions.clear();
        keyRows.clear();
        const StoreReader store(path());
        store.exec("BEGIN; DELETE FROM app_sessions; DELETE FROM keystrokes");
        for (int i = 0; i < 60; ++i) {
            // Whole hours and half seconds make the borders common.
            const double start = kMidnight - 86400 * std::floor(upTo(17)) + 86400
                - (i % 3 == 0 ? 3600 * std::floor(upTo(24)) : std::floor(upTo(172800)) / 2);
            const double length
                = i % 4 == 0 ? std::floor(upTo(6) * 3600) : std::floor(upTo(20)) / 2;
            sessions.push_back({oneOf(kNames), oneOf(kBundles), start, start + length});
            const Session& row = sessions.back();
            store.exec(filled("INSERT INTO app_sessions (app_name, bundle_id, started_at, "
                              "ended_at, duration_sec) VALUES ('{}', '{}', {}, {}, {})",
                {row.name, row.bundle, shortestText(row.start), shortestText(row.end),
                    shortestText(length)}));
            keyRows.push_back({kMidnight - 86400 + std::floor(upTo(172800)), oneOf(kNames),
                oneOf(kMethods), static_cast<std::int64_t>(upTo(300))});
            const Keys& keyRow = keyRows.back();
            store.exec(filled("INSERT INTO keystrokes (timestamp, app_name, input_method, "
                              "keystroke_count) VALUES ({}, '{}', '{}', {})",
                {shortestText(keyRow.time), keyRow.app, keyRow.method,
                    std::to_string(keyRow.count)}));
        }
        store.exec("COMMIT");
    }

    static bool isCounted(const Session& row)
    {
        return row.name != "loginwindow" && row.name != "MyLogin" && row.name != "Quillbrook";
    }

    std::mt19937 random{11};
    std::vector<Session> sessions{};
    std::vector<Keys> keyRows{};
};

TEST_F(RandomStoresTest, TheTimelineIsTheOverlapOfSessionsAndHours)
{
    for (int round = 0; round < 40; ++round) {
        fill();
        std::map<std::int64_t, std::map<std::string, double>> wanted;
        for (const Session& row : sessions) {
            for (std::int64_t hour = 0; hour < 24; ++hour) {
                const double begins = kMidnight + static_cast<double>(hour) * 3600;
                const double overlap
                    = std::min(row.end, begins + 3600) - std::max(row.start, begins);
                if (isCounted(row) && row.start >= kMidnight && row.end - row.start >= 3
                    && overlap > 0) {
                    wanted[hour][row.name] += overlap;
                }
            }
        }
        std::map<std::int64_t, std::map<std::string, double>> found;
        for (const auto& entry : read({.tab = NavTab::today}).hourlyTimeline) {
            double total = 0;
            for (const HourUsage& app : entry.apps) {
                found[entry.hour][app.appName] = app.seconds;
                total += app.seconds;
            }
            EXPECT_EQ(entry.total, total);
        }
        EXPECT_EQ(found, wanted);
    }
}

TEST_F(RandomStoresTest, FocusHoursAreTheSecondsAndDaysOfEachHour)
{
    for (int round = 0; round < 40; ++round) {
        fill();
        std::array<double, 24> seconds{};
        std::array<std::set<double>, 24> days;
        for (const Session& row : sessions) {
            for (double half = row.start; half < row.end; half += 0.5) {
                const auto hour = static_cast<std::size_t>(std::fmod((half + 28800) / 3600, 24));
                seconds[hour] += 0.5;
                days[hour].insert(std::floor((row.start + 28800) / 86400));
            }
        }
        const auto hours = read({.tab = NavTab::focus, .focusPeriod = FocusPeriod::all}).focusHours;
        for (std::size_t hour = 0; hour < 24; ++hour) {
            EXPECT_EQ(hours.at(hour).activeSec, seconds[hour]) << hour;
            EXPECT_EQ(hours.at(hour).activeDays, static_cast<std::int64_t>(days[hour].size()));
        }
    }
}

TEST_F(RandomStoresTest, CategoriesAndTrendAreSumsOverClassifiedSessions)
{
    for (int round = 0; round < 40; ++round) {
        fill();
        const StoreReader store(path());
        const RuleSet rules = CategoryStore::loadRuleSet(store.handle());
        std::map<std::string, double> wanted;
        std::map<std::pair<double, std::string>, double> wantedTrend;
        for (const Session& row : sessions) {
            const std::string key = CategoryStore::classify(rules, row.bundle, row.name).key;
            const double dayStart = std::floor((row.start + 28800) / 86400) * 86400 - 28800;
            if (isCounted(row) && row.start >= kMidnight - 7 * 86400) {
                wanted[key] += row.end - row.start;
            }
            if (isCounted(row) && dayStart >= kMidnight - 14 * 86400 && dayStart <= kMidnight) {
                wantedTrend[{dayStart, key}] += (row.end - row.start) / 3600;
            }
        }
        std::map<std::string, double> found;
        for (const CategoryUsage& usage :
            read({.tab = NavTab::habit, .habitPeriod = HabitPeriod::week}).categoryUsage) {
            found[usage.category] = usage.totalSeconds;
        }
        EXPECT_EQ(found, wanted);
        const auto trend = computeTrend(store.handle(), rules, machine.clock.now());
        EXPECT_EQ(trend.size(), wantedTrend.size());
        for (const CategoryTrendPoint& point : trend) {
            EXPECT_NEAR(point.hours, (wantedTrend[{point.date, point.category}]), 1e-9);
        }
    }
}

TEST_F(RandomStoresTest, TokensAreKeysAtTheirRates)
{
    for (int round = 0; round < 40; ++round) {
        fill();
        std::int64_t total = 0;
        std::set<double> times;
        std::array<std::int64_t, 24> byHour{};
        std::map<std::pair<std::size_t, std::string>, std::map<std::string, std::int64_t>> groups;
        for (const Keys& row : keyRows) {
            if (row.time >= kMidnight) {
                const auto hour
                    = static_cast<std::size_t>(std::fmod((row.time + 28800) / 3600, 24));
                total += row.count;
                byHour[hour] += row.count;
                times.insert(row.time);
                groups[{hour, row.app}][row.method] += row.count;
            }
        }
        double tokens = 0;
        for (const auto& [place, methods] : groups) {
            std::int64_t keystrokes = 0;
            for (const auto& [method, count] : methods) {
                keystrokes += count;
            }
            // The store hands over the methods of an application by name.
            tokens += tokenRate(methods.rbegin()->first) * static_cast<double>(keystrokes);
        }
        const auto data = read({.tab = NavTab::keylog});
        EXPECT_EQ(data.totalKeylogKeystrokes, total);
        EXPECT_EQ(data.totalActiveKeylogMinutes, static_cast<std::int64_t>(times.size()));
        EXPECT_NEAR(data.totalKeylogTokens, tokens, 1e-6);
        for (std::size_t hour = 0; hour < 24; ++hour) {
            EXPECT_EQ(data.keylogHourly.at(hour).keystrokes, byHour[hour]);
        }
    }
}

} // namespace
} // namespace quillbrook
