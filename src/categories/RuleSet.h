#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillbrook {

/// One of the categories that the store knows.
struct CategoryInfo {
    std::string key{};
    std::string label{}; // as shown
    std::string color{}; // "#RRGGBB"
};

/// All applications whose bundle identifier begins with `prefix`.
struct PrefixRule {
    std::string prefix{};
    std::int64_t categoryId = 0;
};

/// The rules of a store, read at one moment. A value: every refresh has its own.
struct RuleSet {
    std::unordered_map<std::int64_t, CategoryInfo> catInfo{}; // by category id
    std::unordered_map<std::string, std::int64_t> userExact{}; // category id by bundle identifier
    std::vector<PrefixRule> systemPrefixes{}; // longest prefix first
};

} // namespace quillbrook
