#pragma once

#include "categories/RuleSet.h"

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillbrook {

class Clock;

/// A category as pages show it.
struct CategoryName {
    std::string key{};
    std::string label{};

    bool operator==(const CategoryName&) const = default;
};

/// An application that has had a session.
struct DistinctApp {
    std::string appName{};
    std::string bundleId{}; // "unknown" when the store has none

    bool operator==(const DistinctApp&) const = default;
};

/// The categories and the rules that place an application in one. Stateless: each operation works
/// on the connection, or through the function, that it is handed.
namespace CategoryStore {

/// Runs one SQL text on a writing connection.
using Exec = std::function<void(const std::string& sql)>;

/// Adds the thirteen categories that are missing from `categories`.
void seedCategories(const Exec& exec);

/// Adds the prefix rules that are missing from `app_categories`. Rows that exist stay as they
/// are, a user's included.
void seedAppPrefixes(const Exec& exec);

/// Reads the rules; empty when the tables can't be read.
RuleSet loadRuleSet(sqlite3* db);

/// The category of an application: a user's choice first, then the longest prefix that its
/// bundle identifier begins with, else the uncategorized. The name has no influence.
CategoryName classify(
    const RuleSet& rules, const std::optional<std::string>& bundleId, const std::string& appName);

/// Every application that ever had a session, without the system's own, by name.
std::vector<DistinctApp> allDistinctApps(sqlite3* db);

/// Writes the user's choice for one bundle identifier, in place of an earlier one.
void setUserCategory(
    const Exec& exec, const Clock& clock, const std::string& bundleId, std::int64_t categoryId);

} // namespace CategoryStore

} // namespace quillbrook
