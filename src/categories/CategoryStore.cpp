#include "categories/CategoryStore.h"

#include "base/Sqlite.h"
#include "base/Text.h"
#include "categories/SeedTables.h"
#include "platform/Clock.h"

#include <map>
#include <string_view>
#include <variant>

namespace quillbrook::CategoryStore {

namespace {

using Value = std::variant<std::monostate, std::int64_t, double, std::string>;
using Row = std::map<std::string, Value>;

Value columnValue(const Statement& statement, int column)
{
    switch (sqlite3_column_type(statement.get(), column)) {
    case SQLITE_INTEGER:
        return sqlite3_column_int64(statement.get(), column);
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement.get(), column);
    case SQLITE_TEXT:
        // Up to the first NUL and well formed, as identifiers of sessions are read.
        return validUtf8(std::string(columnText(statement, column)).c_str());
    default:
        return {};
    }
}

std::vector<Row> query(sqlite3* db, const std::string& sql)
{
    std::vector<Row> rows;
    const Statement statement = prepare(db, sql);
    while (statement && sqlite3_step(statement.get()) == SQLITE_ROW) {
        Row row;
        for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
            row.insert_or_assign(
                sqlite3_column_name(statement.get(), column), columnValue(statement, column));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

/// The value of a column, if it has the type that is asked for.
template <typename T>
const T* valueOf(const Row& row, const std::string& column)
{
    const auto found = row.find(column);
    return found == row.end() ? nullptr : std::get_if<T>(&found->second);
}

} // namespace

void seedCategories(const Exec& exec)
{
    for (const CategorySeed& category : categorySeedTable) {
        exec(filled("INSERT OR IGNORE INTO categories (id, key, label, color) "
                    "VALUES ({}, '{}', '{}', '{}')",
            {std::to_string(category.id), sqlQuoted(category.key), sqlQuoted(category.label),
                sqlQuoted(category.color)}));
    }
}

void seedAppPrefixes(const Exec& exec)
{
    for (const PrefixSeed& seed : appPrefixSeedTable) {
        const auto id = categoryIdByKey().find(seed.categoryKey);
        if (id == categoryIdByKey().end()) {
            continue;
        }
        exec(filled("INSERT OR IGNORE INTO app_categories "
                    "(match_key, match_type, category_id, source) "
                    "VALUES ('{}', 'bundle_prefix', {}, 'system')",
            {sqlQuoted(seed.prefix), std::to_string(id->second)}));
    }
}

RuleSet loadRuleSet(sqlite3* db)
{
    RuleSet rules;
    for (const Row& row : query(db, "SELECT id, key, label, color FROM categories")) {
        const auto* id = valueOf<std::int64_t>(row, "id");
        const auto* key = valueOf<std::string>(row, "key");
        const auto* label = valueOf<std::string>(row, "label");
        const auto* color = valueOf<std::string>(row, "color");
        if (id != nullptr && key != nullptr && label != nullptr && color != nullptr) {
            rules.catInfo.insert_or_assign(*id, CategoryInfo{*key, *label, *color});
        }
    }

    const std::string sql = R"(    SELECT match_key, match_type, category_id, source
    FROM app_categories
    WHERE match_type IN ('exact', 'bundle_prefix')
    ORDER BY
        CASE match_type
            WHEN 'exact' THEN 0
            WHEN 'bundle_prefix' THEN 1
        END,
        LENGTH(match_key) DESC)";
    for (const Row& row : query(db, sql)) {
        const auto* matchKey = valueOf<std::string>(row, "match_key");
        const auto* matchType = valueOf<std::string>(row, "match_type");
        const auto* categoryId = valueOf<std::int64_t>(row, "category_id");
        const auto* source = valueOf<std::string>(row, "source");
        if (matchKey == nullptr || matchType == nullptr || categoryId == nullptr
            || source == nullptr) {
            continue;
        }
        if (*source == "user" && *matchType == "exact") {
            rules.userExact.insert_or_assign(*matchKey, *categoryId);
        } else if (*source == "system" && *matchType == "bundle_prefix") {
            rules.systemPrefixes.push_back({*matchKey, *categoryId});
        }
    }
    return rules;
}

CategoryName classify(
    const RuleSet& rules, const std::optional<std::string>& bundleId, const std::string&)
{
    const auto nameOf = [&rules](std::int64_t id) -> std::optional<CategoryName> {
        const auto info = rules.catInfo.find(id);
        if (info == rules.catInfo.end()) {
            return std::nullopt;
        }
        return CategoryName{info->second.key, info->second.label};
    };

    if (bundleId && !bundleId->empty() && *bundleId != "unknown") {
        if (const auto chosen = rules.userExact.find(*bundleId); chosen != rules.userExact.end()) {
            if (auto name = nameOf(chosen->second)) {
                return *std::move(name);
            }
        }
        for (const PrefixRule& rule : rules.systemPrefixes) {
            if (bundleId->starts_with(rule.prefix)) {
                if (auto name = nameOf(rule.categoryId)) {
                    return *std::move(name);
                }
            }
        }
    }
    return nameOf(kUncategorizedId)
        .value_or(CategoryName{std::string(kUncategorizedKey), std::string(kUncategorizedLabel)});
}

std::vector<DistinctApp> allDistinctApps(sqlite3* db)
{
    const std::string sql
        = R"(    SELECT DISTINCT app_name, COALESCE(NULLIF(bundle_id,''), 'unknown') AS bundle_id
    FROM app_sessions
    WHERE app_name NOT IN ('loginwindow', 'WindowServer', 'kernel_task', 'launchd', 'ScreenSaverEngine', 'Quillbrook')
      AND app_name NOT LIKE '%login%'
      AND app_name NOT LIKE '%ScreenSaver%'
    GROUP BY app_name, bundle_id
    ORDER BY app_name)";
    std::vector<DistinctApp> apps;
    for (const Row& row : query(db, sql)) {
        const auto* appName = valueOf<std::string>(row, "app_name");
        const auto* bundleId = valueOf<std::string>(row, "bundle_id");
        if (appName != nullptr && bundleId != nullptr) {
            apps.push_back({*appName, *bundleId});
        }
    }
    return apps;
}

void setUserCategory(
    const Exec& exec, const Clock& clock, const std::string& bundleId, std::int64_t categoryId)
{
    const std::string id = std::to_string(categoryId);
    const std::string now = shortestText(clock.now());
    exec(filled(
        R"(    INSERT INTO app_categories (match_key, match_type, category_id, source, updated_at)
    VALUES ('{}', 'exact', {}, 'user', {})
    ON CONFLICT(match_key, match_type) DO UPDATE SET
        category_id = {},
        updated_at = {})",
        {sqlQuoted(bundleId), id, now, id, now}));
}

} // namespace quillbrook::CategoryStore
