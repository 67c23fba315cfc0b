#include "categories/CategoryStore.h"

#include "base/Sqlite.h"
#include "base/Text.h"
#include "categories/SeedTables.h"
#include "categories/SystemNames.h"
#include "platform/Clock.h"

#include <optional>
#include <utility>

namespace quillbrook::CategoryStore {

namespace {

/// The rows of a query, read one at a time. A value of another type than the one asked for counts
/// as absent. A statement that can't be prepared has no rows.
class RawQuery {
public:
    RawQuery(sqlite3* db, std::string_view sql) : statement(prepare(db, sql)) {}

    bool next() { return statement && sqlite3_step(statement.get()) == SQLITE_ROW; }

    std::optional<std::int64_t> integer(int column) const
    {
        sqlite3_value* const value = sqlite3_column_value(statement.get(), column);
        return sqlite3_value_type(value) == SQLITE_INTEGER
            ? std::optional<std::int64_t>(sqlite3_value_int64(value))
            : std::nullopt;
    }

    /// Up to the first NUL and well formed, as identifiers of sessions are read.
    std::optional<std::string> text(int column) const
    {
        sqlite3_value* const value = sqlite3_column_value(statement.get(), column);
        return sqlite3_value_type(value) == SQLITE_TEXT
            ? std::optional(validUtf8(storedText(value)))
            : std::nullopt;
    }

private:
    Statement statement;
};

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
    RawQuery categories(db, "SELECT id, key, label, color FROM categories");
    while (categories.next()) {
        const auto id = categories.integer(0);
        auto key = categories.text(1);
        auto label = categories.text(2);
        auto color = categories.text(3);
        if (id && key && label && color) {
            rules.catInfo.insert_or_assign(
                *id, CategoryInfo{*std::move(key), *std::move(label), *std::move(color)});
        }
    }

    RawQuery matches(db, R"(    SELECT match_key, match_type, category_id, source
    FROM app_categories
    WHERE match_type IN ('exact', 'bundle_prefix')
    ORDER BY
        CASE match_type
            WHEN 'exact' THEN 0
            WHEN 'bundle_prefix' THEN 1
        END,
        LENGTH(match_key) DESC)");
    while (matches.next()) {
        auto matchKey = matches.text(0);
        const auto matchType = matches.text(1);
        const auto categoryId = matches.integer(2);
        const auto source = matches.text(3);
        if (!matchKey || !matchType || !categoryId || !source) {
            continue;
        }
        if (*source == "user" && *matchType == "exact") {
            rules.userExact.insert_or_assign(*std::move(matchKey), *categoryId);
        } else if (*source == "system" && *matchType == "bundle_prefix") {
            rules.systemPrefixes.push_back({*std::move(matchKey), *categoryId});
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
    RawQuery query(db,
        filled(
            R"(    SELECT DISTINCT app_name, COALESCE(NULLIF(bundle_id,''), 'unknown') AS bundle_id
    FROM app_sessions
    WHERE app_name NOT IN ({})
      AND app_name NOT LIKE '%login%'
      AND app_name NOT LIKE '%ScreenSaver%'
    GROUP BY app_name, bundle_id
    ORDER BY app_name)",
            {kSystemNamesSql}));
    std::vector<DistinctApp> apps;
    while (query.next()) {
        auto appName = query.text(0);
        auto bundleId = query.text(1);
        if (appName && bundleId) {
            apps.push_back({*std::move(appName), *std::move(bundleId)});
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
