#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace quillbrook {

struct CategorySeed {
    std::int64_t id;
    std::string_view key;
    std::string_view label;
    std::string_view color; // "#RRGGBB"
};

/// Places the applications whose bundle identifier begins with `prefix` into a category. An
/// asterisk in a prefix is an ordinary character.
struct PrefixSeed {
    std::string_view prefix;
    std::string_view categoryKey;
};

struct SelectableCategory {
    std::string_view label;
    std::int64_t id;
};

constexpr std::int64_t kUncategorizedId = 9;
constexpr std::string_view kUncategorizedKey = "uncategorized";
constexpr std::string_view kUncategorizedLabel = "未分类";

extern const std::array<CategorySeed, 13> categorySeedTable;
extern const std::array<PrefixSeed, 113> appPrefixSeedTable;

/// Colour by category key.
const std::map<std::string_view, std::string_view>& categoryColors();

/// Category id by key.
const std::map<std::string_view, std::int64_t>& categoryIdByKey();

/// What a user can choose from, in table order: all but the uncategorized.
const std::vector<SelectableCategory>& selectableCategories();

} // namespace quillbrook
