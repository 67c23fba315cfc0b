#include "tests/report/ReportFixture.h"

#include "base/Fatal.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Another process that has run some statements on a store and keeps its connection open. With it,
/// SQLite's locks are those of a stranger.
class OtherProcess {
public:
    OtherProcess(const std::string& path, const std::string& sql)
    {
        std::array<int, 2> ready{};
        std::array<int, 2> until{};
        if (pipe(ready.data()) != 0 || pipe(until.data()) != 0) {
            fatal("no pipe");
        }
        child = fork();
        if (child == 0) {
            close(until[1]);
            const Connection store = openConnection(path, SQLITE_OPEN_READWRITE).connection;
            const int result = sqlite3_exec(store.get(), sql.c_str(), nullptr, nullptr, nullptr);
            char byte = result == SQLITE_OK ? '+' : '-';
            [[maybe_unused]] const auto told = write(ready[1], &byte, 1);
            [[maybe_unused]] const auto ended = ::read(until[0], &byte, 1);
            _exit(0);
        }
        close(ready[1]);
        close(until[0]);
        untilClosed = until[1];
        char byte = 0;
        if (::read(ready[0], &byte, 1) != 1 || byte != '+') {
            fatal("the other process failed: " + sql);
        }
        close(ready[0]);
    }
    ~OtherProcess()
    {
        close(untilClosed);
        waitpid(child, nullptr, 0);
    }

    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

private:
    pid_t child = -1;
    int untilClosed = -1;
};

/// Stores that are not, or not wholly, as this version of the engine leaves them.
class StoreStatesTest : public ReportFixture {
protected:
    void fillADay()
    {
        session("Editor", 3600, 7200, "com.apple.dt.Xcode");
        session("Safari", 7300, 7400.5, "com.apple.Safari");
        keys(3660, "Editor", "'english'", 100);
        exec("INSERT INTO alerts (timestamp, alert_type, severity, message) "
             "VALUES (1767200000.5, 'high_load', 'warning', 'm')");
        exec("INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type) "
             "VALUES (1767200000, 1767200600, 600, 2)");
        exec("INSERT INTO boot_events (timestamp, boot_time) VALUES (1767200000, 5)");
    }

    std::vector<DashboardData> readAllPages()
    {
        std::vector<DashboardData> pages;
        for (const auto& tab : allCases<NavTab>) {
            pages.push_back(read({.tab = tab.value}));
        }
        return pages;
    }

    /// What the pages make of a store of which no statement can be answered: records that are built
    /// all the same, with zeros and empty lists.
    void expectNothingIsFound()
    {
        const auto today = read({.tab = NavTab::today});
        ASSERT_TRUE(today.overview);
        EXPECT_EQ(today.overview->sessionCount, 0);
        EXPECT_EQ(today.overview->longestSessionMinutes, 0);
        EXPECT_FALSE(today.overview->firstActivity);
        EXPECT_THAT(today.appUsage, IsEmpty());
        EXPECT_THAT(today.hourlyTimeline, IsEmpty());
        EXPECT_THAT(today.keylogHourly, SizeIs(24));
        EXPECT_EQ(today.totalKeylogKeystrokes, 0);
        EXPECT_EQ(today.tpm, 0);
        const auto past = read({.tab = NavTab::history});
        ASSERT_TRUE(past.historyOverview);
        EXPECT_EQ(past.historyOverview->appSwitchCount, 0);
        EXPECT_EQ(past.historyOverview->bootCount, 1);
        EXPECT_THAT(read({.tab = NavTab::habit}).categoryUsage, IsEmpty());
        EXPECT_THAT(read({.tab = NavTab::alerts}).alerts, IsEmpty());
        EXPECT_THAT(read({.tab = NavTab::session}).recentSessions, IsEmpty());
        EXPECT_THAT(read({.tab = NavTab::idles}).recentIdles, IsEmpty());
        const auto focus = read({.tab = NavTab::focus});
        EXPECT_THAT(focus.focusHours, SizeIs(16));
        EXPECT_EQ(focus.focusHours[1].activeSec, 0);
        EXPECT_THAT(focus.durationBuckets, IsEmpty());
        EXPECT_THAT(focus.dailyAvgSessions, IsEmpty());
    }

    void replaceStoreBy(const std::string& bytes) const
    {
        removeStore();
        std::ofstream(path(), std::ios::binary) << bytes;
    }

    void removeStore() const
    {
        for (const char* suffix : {"", "-wal", "-shm"}) {
            fs::remove(path() + suffix);
        }
    }

    /// The store as one file without a log.
    std::string storeBytes() const
    {
        exec("PRAGMA wal_checkpoint(TRUNCATE); PRAGMA journal_mode=DELETE");
        std::ifstream file(path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(StoreStatesTest, AMissingStoreLeavesEveryRecordEmptyAndIsNotMade)
{
    removeStore();
    for (const DashboardData& page : readAllPages()) {
        EXPECT_FALSE(page.overview);
        EXPECT_FALSE(page.historyOverview);
        EXPECT_THAT(page.keylogHourly, IsEmpty());
        EXPECT_THAT(page.focusHours, IsEmpty());
    }
    EXPECT_FALSE(fs::exists(path()));
}

TEST_F(StoreStatesTest, AFolderInItsPlaceIsNoStore)
{
    removeStore();
    fs::create_directory(path());
    EXPECT_FALSE(read({.tab = NavTab::today}).overview);
    EXPECT_THAT(read({.tab = NavTab::focus}).focusHours, IsEmpty());
}

TEST_F(StoreStatesTest, AnEmptyFileHoldsNothing)
{
    replaceStoreBy("");
    expectNothingIsFound();
    EXPECT_EQ(fs::file_size(path()), 0U);
}

TEST_F(StoreStatesTest, AFileThatIsNoDatabaseHoldsNothing)
{
    replaceStoreBy("x");
    expectNothingIsFound();
    replaceStoreBy(std::string(20000, 'x'));
    expectNothingIsFound();
    replaceStoreBy(std::string("SQLite format 3\0", 16) + std::string(20000, '\xFF'));
    expectNothingIsFound();
}

TEST_F(StoreStatesTest, AStoreBeforeItsFirstTableHoldsNothing)
{
    removeStore();
    exec("PRAGMA journal_mode=WAL; PRAGMA user_version=1");
    expectNothingIsFound();
}

TEST_F(StoreStatesTest, AFileThatWasCutOffIsReadAsFarAsItGoes)
{
    exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
         "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec) "
         "SELECT 'Application ' || (i % 7), 'org.example', 1767196800 + i * 20, "
         "1767196815.5 + i * 20, 15.5 FROM n");
    fillADay();
    const std::string whole = storeBytes();
    const auto wholeCount = read({.tab = NavTab::today}).overview->sessionCount;
    EXPECT_EQ(wholeCount, 2003);
    for (std::size_t size = 0; size < whole.size();
         size = size < 4096 ? size * 2 + 31 : size + 5000) {
        replaceStoreBy(whole.substr(0, size));
        for (const DashboardData& page : readAllPages()) {
            EXPECT_LE(page.recentSessions.size(), 200U);
            if (page.overview) {
                EXPECT_LE(page.overview->sessionCount, wholeCount);
                EXPECT_THAT(page.keylogHourly, SizeIs(24));
            }
        }
    }
}

TEST_F(StoreStatesTest, ADamagedPageCostsTheRowsBehindItAlone)
{
    exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
         "INSERT INTO alerts (timestamp, alert_type, severity, message) "
         "SELECT 1767196800 + i, 'high_load', 'warning', 'message ' || i FROM n");
    fillADay();
    std::string bytes = storeBytes();
    // The newest alerts are read first; one of the oldest lies on the page that goes.
    const std::size_t place = bytes.find("message 20");
    ASSERT_NE(place, std::string::npos);
    const std::size_t page = place / 4096 * 4096;
    bytes.replace(page, 4096, std::string(4096, '\x77'));
    replaceStoreBy(bytes);
    const auto alerts = read({.tab = NavTab::alerts}).alerts;
    EXPECT_GT(alerts.size(), 4000U);
    EXPECT_LT(alerts.size(), 5001U);
    EXPECT_EQ(alerts.front().message, "message 5000");
    EXPECT_EQ(read({.tab = NavTab::today}).overview->sessionCount, 2);
}

TEST_F(StoreStatesTest, AWriterThatHoldsTheStoreKeepsNoReaderOut)
{
    fillADay();
    const OtherProcess writer(path(), "BEGIN EXCLUSIVE; DELETE FROM app_sessions");
    EXPECT_EQ(read({.tab = NavTab::today}).overview->sessionCount, 2);
    EXPECT_EQ(read({.tab = NavTab::keylog}).totalKeylogKeystrokes, 100);
}

// Without the log beside it, a store has one lock for all.
TEST_F(StoreStatesTest, AStoreLockedByAStrangerHoldsNothingUntilTheLockGoes)
{
    fillADay();
    exec("PRAGMA journal_mode=DELETE");
    {
        const OtherProcess stranger(path(), "BEGIN EXCLUSIVE");
        expectNothingIsFound();
    }
    EXPECT_EQ(read({.tab = NavTab::today}).overview->sessionCount, 2);
}

TEST_F(StoreStatesTest, AStoreThatAStrangerHasForItselfHoldsNothing)
{
    fillADay();
    const OtherProcess stranger(path(),
        "PRAGMA locking_mode=EXCLUSIVE; INSERT INTO boot_events (timestamp, boot_time) "
        "VALUES (1767200001, 6)");
    expectNothingIsFound();
}

TEST_F(StoreStatesTest, AChangeOfALockedStoreIsToldAndDoesNotWait)
{
    fillADay();
    DataProvider provider(machine.platform());
    machine.runFor(0);
    const OtherProcess writer(path(), "BEGIN IMMEDIATE");
    testing::internal::CaptureStdout();
    provider.changeAppCategory("com.apple.Safari", 10);
    const std::string told = testing::internal::GetCapturedStdout();
    EXPECT_THAT(told, HasSubstr("[changeAppCategory] SQL 错误 (rc=5): database is locked\n"));
    EXPECT_THAT(told, HasSubstr("[changeAppCategory] DB 已关闭, 调用 refresh\n"));
    EXPECT_TRUE(provider.isLoading.get());
    machine.runFor(0);
    EXPECT_EQ(provider.data.get()->overview->sessionCount, 2);
}

TEST_F(StoreStatesTest, AStoreOfAnOlderVersionShowsWhatItHas)
{
    fillADay();
    exec("ALTER TABLE app_sessions DROP COLUMN close_type; DROP INDEX idx_idle_source; "
         "ALTER TABLE idle_periods DROP COLUMN source_type");
    EXPECT_THAT(
        read({.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today}).recentSessions,
        IsEmpty());
    EXPECT_THAT(read({.tab = NavTab::idles}).recentIdles, IsEmpty());
    const auto today = read({.tab = NavTab::today});
    EXPECT_EQ(today.overview->sessionCount, 2);
    EXPECT_THAT(today.appUsage, SizeIs(2));
    EXPECT_THAT(read({.tab = NavTab::habit}).categoryUsage, SizeIs(2));
    EXPECT_THAT(read({.tab = NavTab::focus}).dailyAvgSessions, SizeIs(1));
}

TEST_F(StoreStatesTest, EveryMissingTableCostsItsOwnFiguresAlone)
{
    fillADay();
    exec("DROP TABLE keystrokes");
    auto today = read({.tab = NavTab::today});
    EXPECT_THAT(today.keylogHourly, SizeIs(24));
    EXPECT_EQ(today.totalActiveKeylogMinutes, 0);
    EXPECT_EQ(today.overview->sessionCount, 2);

    exec("DROP TABLE app_categories");
    EXPECT_EQ(read({.tab = NavTab::today}).appUsage.at(0).categoryLabel, "未分类");
    exec("UPDATE categories SET label = '别的' WHERE id = 9");
    EXPECT_EQ(read({.tab = NavTab::today}).appUsage.at(0).categoryLabel, "别的");
    exec("DROP TABLE categories");
    EXPECT_EQ(read({.tab = NavTab::today}).appUsage.at(0).categoryLabel, "未分类");
    EXPECT_EQ(read({.tab = NavTab::habit}).categoryUsage.at(0).category, "uncategorized");

    exec("DROP TABLE alerts");
    EXPECT_EQ(read({.tab = NavTab::alerts}).alertCount, 0);
    EXPECT_THAT(read({.tab = NavTab::idles}).recentIdles, SizeIs(1));
    exec("DROP TABLE idle_periods");
    EXPECT_THAT(read({.tab = NavTab::idles}).recentIdles, IsEmpty());

    exec("DROP TABLE app_sessions");
    EXPECT_EQ(read({.tab = NavTab::history}).historyOverview->bootCount, 1);
    exec("INSERT INTO boot_events (timestamp, boot_time) VALUES (1767200001, 6)");
    EXPECT_EQ(read({.tab = NavTab::history}).historyOverview->bootCount, 2);
    EXPECT_EQ(read({.tab = NavTab::today}).overview->sessionCount, 0);
    EXPECT_THAT(read({.tab = NavTab::focus}).focusHours, SizeIs(16));
}

// Times are doubles to every reader but the trend's, which takes whole numbers too.
TEST_F(StoreStatesTest, WholeNumbersInPlaceOfDoublesCountForTheTrendAlone)
{
    exec("DROP TABLE app_sessions; CREATE TABLE app_sessions (id INTEGER PRIMARY KEY, app_name, "
         "bundle_id, started_at INTEGER, ended_at INTEGER, duration_sec INTEGER, close_type); "
         "INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
         "close_type) VALUES ('Editor', 'com.apple.dt.Xcode', 1767200000, 1767203600, 3600, 0)");
    const auto today = read({.tab = NavTab::today});
    EXPECT_EQ(today.overview->sessionCount, 1);
    EXPECT_EQ(today.overview->totalActiveHours, 0);
    EXPECT_FALSE(today.overview->firstActivity);
    EXPECT_FALSE(today.overview->lastActivity);
    EXPECT_EQ(today.overview->longestSessionMinutes, 0);
    EXPECT_THAT(today.appUsage, IsEmpty());
    EXPECT_THAT(read({.tab = NavTab::habit}).categoryUsage, IsEmpty());
    EXPECT_THAT(
        read({.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today}).recentSessions,
        IsEmpty());
    EXPECT_EQ(read({.tab = NavTab::focus}).focusHours.at(1).activeSec, 0);

    DataProvider provider(machine.platform());
    provider.selectedTab.set(NavTab::habit);
    provider.refresh();
    machine.runFor(0);
    ASSERT_THAT(provider.categoryTrend.get(), SizeIs(1));
    EXPECT_EQ(provider.categoryTrend.get()[0].category, "development");
    EXPECT_EQ(provider.categoryTrend.get()[0].hours, 1);
}

TEST_F(StoreStatesTest, ValuesThatNoVersionWroteAreLeftOutOrReplaced)
{
    exec("INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec, "
         "close_type) VALUES "
         "(x'4564', 'a', 1767200000, 1767200060, 60, 0), "
         "('Text', 5, 1767200000, 'later', 'long', 'odd'), "
         "('Blob', x'00', 1767200001, x'00', x'00', x'00'), "
         "(CAST(x'61FF6200' AS TEXT), CAST(x'FE' AS TEXT), 1767200002, 1767200062, 60, 2.5)");
    const auto rows
        = read({.tab = NavTab::session, .sessionsPeriod = SessionsPeriod::today}).recentSessions;
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_EQ(rows[0].appName, "a\uFFFDb");
    EXPECT_EQ(rows[0].bundleId, "\uFFFD");
    EXPECT_EQ(rows[0].status, "closed"); // 2.5 is no code
    EXPECT_EQ(rows[1].appName, "Blob");
    EXPECT_EQ(rows[1].bundleId, "unknown");
    EXPECT_EQ(rows[1].status, "active");
    EXPECT_EQ(rows[1].durationSec, 0);
    EXPECT_EQ(rows[2].appName, "Text");
    EXPECT_EQ(rows[2].bundleId, "5"); // the column makes texts of numbers
    EXPECT_EQ(rows[2].status, "active");
    const auto usage = read({.tab = NavTab::habit}).categoryUsage;
    ASSERT_THAT(usage, SizeIs(1));
    EXPECT_EQ(usage[0].sessionCount, 1);
    exec("INSERT INTO idle_periods (started_at, ended_at, duration_sec, source_type) VALUES "
         "('x', 1, 1, 1), (1767200000, 'x', 'x', 'x')");
    const auto idles = read({.tab = NavTab::idles}).recentIdles;
    ASSERT_THAT(idles, SizeIs(1));
    EXPECT_FALSE(idles[0].endedAt);
    EXPECT_EQ(idles[0].durationSec, 0);
    EXPECT_EQ(idles[0].sourceType, 1);
}

} // namespace
} // namespace quillbrook
