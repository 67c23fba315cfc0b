#include "report/DataProvider.h"

#include "base/Fatal.h"
#include "base/Sqlite.h"
#include "base/Text.h"
#include "categories/CategoryStore.h"
#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/MainLoop.h"
#include "platform/WorkQueues.h"
#include "report/CategoryReports.h"
#include "report/StoreQuery.h"

#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

namespace quillbrook {

namespace {

void print(std::string_view line)
{
    const std::string text = "[changeAppCategory] " + std::string(line) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

void execAndPrint(sqlite3* db, const std::string& sql)
{
    char* message = nullptr;
    const int result = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message);
    if (result != SQLITE_OK) {
        print(filled("SQL 错误 (rc={}): {}",
            {std::to_string(result), message == nullptr ? "未知错误" : message}));
    } else {
        print(filled("SQL 成功: {}...", {firstCharacters(sql, 80)}));
    }
    sqlite3_free(message);
}

/// The trend, or nothing when the store can't be opened.
std::optional<std::vector<CategoryTrendPoint>> readTrend(
    const Platform& platform, const std::string& dbPath)
{
    const OpenedConnection opened = openConnection(dbPath, kReaderFlags);
    if (opened.result != SQLITE_OK) {
        return std::nullopt;
    }
    sqlite3* db = opened.connection.get();
    return computeTrend(db, CategoryStore::loadRuleSet(db), platform.clock.now());
}

} // namespace

DataProvider::DataProvider(const Platform& platform) : platform(platform)
{
    refresh();
}

void DataProvider::refresh()
{
    isLoading.set(true);
    const RefreshContext ctx = context();
    if (ctx.tab == NavTab::life || ctx.tab == NavTab::about) {
        if (!data.get()) {
            data.set(DashboardData{});
        }
        isLoading.set(false);
        return;
    }
    // The worker never touches the provider, which may go meanwhile.
    platform.workQueues.runUserInitiated(
        [this, watch = lifetime.watch(), ctx, tools = platform, file = dbPath()] {
            if (watch.isOver()) {
                return;
            }
            auto record = std::make_shared<DashboardData>(performRefreshSync(tools, file, ctx));
            tools.mainLoop.post([this, watch, ctx, record] {
                if (!watch.isOver()) {
                    publish(std::move(*record), ctx.tab == NavTab::habit);
                }
            });
        });
}

void DataProvider::publish(DashboardData record, bool isHabit)
{
    const Lifetime::Watch watch = lifetime.watch();
    data.set(std::move(record));
    if (watch.isOver()) {
        return; // an observer let the provider go
    }
    isLoading.set(false);
    if (!watch.isOver() && isHabit) {
        loadCategoryTrendDeferred();
    }
}

void DataProvider::loadCategoryTrendDeferred()
{
    platform.workQueues.runDefault(
        [this, watch = lifetime.watch(), tools = platform, file = dbPath()] {
            auto trend = readTrend(tools, file);
            if (!trend) {
                return;
            }
            tools.mainLoop.post([this, watch, points = *std::move(trend)] {
                if (!watch.isOver()) {
                    categoryTrend.set(points);
                }
            });
        });
}

void DataProvider::changeAppCategory(
    const std::string& bundleId, const std::optional<std::int64_t>& categoryId)
{
    print(filled("bundleId={}, categoryId={}",
        {bundleId, categoryId ? std::to_string(*categoryId) : "nil"}));
    OpenedConnection opened = openConnection(dbPath(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (opened.result != SQLITE_OK) {
        print("无法打开数据库: " + dbPath());
        return;
    }
    const auto exec
        = [db = opened.connection.get()](const std::string& sql) { execAndPrint(db, sql); };
    if (categoryId) {
        CategoryStore::setUserCategory(exec, platform.clock, bundleId, *categoryId);
    } else {
        exec(filled("DELETE FROM app_categories WHERE match_key = '{}' AND source = 'user'",
            {sqlQuoted(bundleId)}));
    }
    refresh();
    opened.connection.reset();
    print("DB 已关闭, 调用 refresh");
}

RefreshContext DataProvider::context() const
{
    return {.tab = selectedTab.get(),
        .todayPeriod = todayPeriod.get(),
        .keylogPeriod = keylogPeriod.get(),
        .historyPeriod = historyPeriod.get(),
        .habitPeriod = habitPeriod.get(),
        .sessionsPeriod = sessionsPeriod.get(),
        .idlesPeriod = idlesPeriod.get(),
        .alertsPeriod = alertsPeriod.get(),
        .focusPeriod = focusPeriod.get()};
}

const std::string& DataProvider::dbPath()
{
    if (!path) {
        const auto directory = platform.directories.dataDirectory();
        if (!directory) {
            fatal("there is no place for the data of this user");
        }
        path = storePath(*directory).string();
    }
    return *path;
}

} // namespace quillbrook
