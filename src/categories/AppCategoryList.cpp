#include "categories/AppCategoryList.h"

#include "base/Text.h"
#include "categories/CategoryStore.h"
#include "platform/Clock.h"
#include "platform/Directories.h"
#include "platform/LocaleText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillbrook {

namespace {

void classify(AppEntry& entry, const RuleSet& rules)
{
    CategoryName category = CategoryStore::classify(rules, entry.bundleId, entry.appName);
    entry.categoryKey = std::move(category.key);
    entry.categoryLabel = std::move(category.label);
}

std::vector<AppEntry> readApps(sqlite3* db)
{
    const RuleSet rules = CategoryStore::loadRuleSet(db);
    std::vector<AppEntry> apps;
    for (DistinctApp& app : CategoryStore::allDistinctApps(db)) {
        AppEntry entry{.appName = std::move(app.appName), .bundleId = std::move(app.bundleId)};
        entry.hasUserOverride = rules.userExact.contains(entry.bundleId);
        classify(entry, rules);
        apps.push_back(std::move(entry));
    }
    return apps;
}

} // namespace

AppCategoryList::AppCategoryList(const Platform& platform) : platform(platform) {}

Connection AppCategoryList::openDBReadWrite() const
{
    const auto directory = platform.directories.dataDirectory();
    if (!directory) {
        return nullptr;
    }
    OpenedConnection opened = openConnection(
        storePath(*directory).string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    return opened.result == SQLITE_OK ? std::move(opened.connection) : nullptr;
}

void AppCategoryList::loadData()
{
    if (const Connection db = openDBReadWrite()) {
        entries = readApps(db.get());
        std::ranges::stable_sort(entries, [this](const AppEntry& left, const AppEntry& right) {
            return platform.localeText.compareIgnoringCase(left.appName, right.appName) < 0;
        });
    }
    isFirstLoadDue = false;
}

void AppCategoryList::updateCategory(const AppEntry& app, std::optional<std::int64_t> categoryId)
{
    const Connection db = openDBReadWrite();
    if (!db) {
        return;
    }
    const auto exec = [&db](const std::string& sql) {
        sqlite3_exec(db.get(), sql.c_str(), nullptr, nullptr, nullptr);
    };
    const std::string key = sqlQuoted(app.bundleId);
    exec(filled("DELETE FROM app_categories WHERE match_key = '{}' AND source = 'user'", {key}));
    if (categoryId) {
        exec(filled(
            R"(    INSERT INTO app_categories (match_key, match_type, category_id, source, updated_at)
    VALUES ('{}', 'exact', {}, 'user', {}))",
            {key, std::to_string(*categoryId), shortestText(platform.clock.now())}));
    }
    const RuleSet rules = CategoryStore::loadRuleSet(db.get());
    const auto entry = std::ranges::find(entries, app.bundleId, &AppEntry::bundleId);
    if (entry != entries.end()) {
        classify(*entry, rules);
        entry->hasUserOverride = categoryId.has_value();
    }
}

void AppCategoryList::setSearchText(std::string text)
{
    sought = std::move(text);
}

std::vector<AppEntry> AppCategoryList::filteredApps() const
{
    if (sought.empty()) {
        return entries;
    }
    std::vector<AppEntry> found;
    std::ranges::copy_if(entries, std::back_inserter(found), [this](const AppEntry& entry) {
        return platform.localeText.containsIgnoringCase(entry.appName, sought);
    });
    return found;
}

} // namespace quillbrook
