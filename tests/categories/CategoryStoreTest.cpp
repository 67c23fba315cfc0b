#include "categories/CategoryStore.h"

#include "categories/SeedTables.h"
#include "platform/virtual/VirtualClock.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* kTables = R"(
        CREATE TABLE categories (id INTEGER PRIMARY KEY, key TEXT NOT NULL UNIQUE,
            label TEXT NOT NULL, color TEXT NOT NULL);
        CREATE TABLE app_categories (id INTEGER PRIMARY KEY AUTOINCREMENT,
            match_key TEXT NOT NULL, match_type TEXT NOT NULL DEFAULT 'bundle_prefix',
            category_id INTEGER NOT NULL, source TEXT NOT NULL DEFAULT 'system',
            updated_at REAL NOT NULL DEFAULT (strftime('%s', 'now')),
            UNIQUE(match_key, match_type));
        CREATE TABLE app_sessions (id INTEGER PRIMARY KEY, app_name TEXT NOT NULL,
            bundle_id TEXT);)";

class CategoryStoreTest : public testing::Test {
protected:
    CategoryStoreTest()
    {
        store.exec(kTables);
        seed();
    }

    void seed() const
    {
        CategoryStore::seedCategories(exec);
        CategoryStore::seedAppPrefixes(exec);
    }

    std::string categoryOf(const std::optional<std::string>& bundleId) const
    {
        const RuleSet rules = CategoryStore::loadRuleSet(store.handle());
        return CategoryStore::classify(rules, bundleId, "any name").key;
    }

    TemporaryDirectory directory{};
    StoreReader store{directory.path() / "monitor.db"};
    CategoryStore::Exec exec = [this](const std::string& sql) { store.exec(sql); };
    VirtualClock clock{1767225600.5};
};

TEST_F(CategoryStoreTest, SeedsEachCategoryAndPrefixInOrder)
{
    EXPECT_THAT(store.rows("SELECT * FROM categories"),
        ElementsAre("1|development|开发工具|#3B82F6", "2|browser|浏览器|#F59E0B",
            "3|communication|通讯社交|#10B981", "4|data_analysis|数据分析|#8B5CF6",
            "5|writing|写作笔记|#EC4899", "6|office|办公套件|#F97316", "7|system|系统工具|#6B7280",
            "8|entertainment|娱乐|#EF4444", "9|uncategorized|未分类|#9CA3AF",
            "10|gaming|游戏|#14B8A6", "11|photo_video|摄影剪辑|#F43F5E", "12|travel|旅游|#06B6D4",
            "13|finance|理财|#EAB308"));
    EXPECT_THAT(store.rows("SELECT category_id, COUNT(*) FROM app_categories "
                           "WHERE match_type = 'bundle_prefix' AND source = 'system' "
                           "GROUP BY category_id"),
        ElementsAre("1|17", "2|8", "3|18", "4|3", "5|9", "6|7", "7|16", "8|10", "10|8", "11|13",
            "12|2", "13|2"));
    EXPECT_EQ(
        store.value("SELECT match_key FROM app_categories WHERE id = 1"), "com.apple.dt.Xcode");
    EXPECT_EQ(store.value("SELECT match_key FROM app_categories WHERE id = 113"), "com.alipay");
}

TEST_F(CategoryStoreTest, EverySeedNamesAKnownCategory)
{
    EXPECT_TRUE(std::ranges::all_of(appPrefixSeedTable,
        [](const PrefixSeed& seed) { return categoryIdByKey().contains(seed.categoryKey); }));
}

TEST_F(CategoryStoreTest, SeedingAgainChangesNothing)
{
    store.exec("UPDATE categories SET label = '我的' WHERE id = 2");
    store.exec("UPDATE app_categories SET category_id = 10 WHERE match_key = 'com.bear'");
    const auto before = store.rows("SELECT * FROM categories UNION ALL "
                                   "SELECT id, match_key, category_id, source "
                                   "FROM app_categories");
    seed();
    EXPECT_EQ(store.rows("SELECT * FROM categories UNION ALL "
                         "SELECT id, match_key, category_id, source FROM app_categories"),
        before);
}

TEST_F(CategoryStoreTest, AnApplicationWithoutAnIdentifierIsUncategorized)
{
    store.exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
               "VALUES ('unknown', 'exact', 10, 'user'), ('', 'exact', 10, 'user')");
    EXPECT_EQ(categoryOf(std::nullopt), "uncategorized");
    EXPECT_EQ(categoryOf(""), "uncategorized");
    EXPECT_EQ(categoryOf("unknown"), "uncategorized");
}

TEST_F(CategoryStoreTest, AUsersChoiceBeatsEveryPrefixUntilItGoes)
{
    CategoryStore::setUserCategory(exec, clock, "com.apple.Safari", 10);
    EXPECT_EQ(categoryOf("com.apple.Safari"), "gaming");
    store.exec("DELETE FROM app_categories WHERE source = 'user'");
    EXPECT_EQ(categoryOf("com.apple.Safari"), "browser");
}

TEST_F(CategoryStoreTest, APrefixNeedsNoDotBehindIt)
{
    EXPECT_EQ(categoryOf("com.apple.Safari.SomeHelper"), "browser");
    EXPECT_EQ(categoryOf("com.bearclaw"), "writing");
    EXPECT_EQ(categoryOf("com.jetbrains.clion"), "development");
}

TEST_F(CategoryStoreTest, APrefixIsComparedFromTheBeginningAndWithCase)
{
    EXPECT_EQ(categoryOf("org.com.apple.Safari"), "uncategorized");
    EXPECT_EQ(categoryOf("com.apple.safari"), "uncategorized");
    EXPECT_EQ(categoryOf("com.apple.Safar"), "uncategorized");
}

TEST_F(CategoryStoreTest, BothSpellingsOfOneProgramAreCommunication)
{
    EXPECT_EQ(categoryOf("us.zoom.xos"), "communication");
    EXPECT_EQ(categoryOf("com.zoom.us"), "communication");
}

TEST_F(CategoryStoreTest, TheLongestPrefixWins)
{
    EXPECT_EQ(categoryOf("com.adobe.LightroomClassic"), "photo_video");
    store.exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
               "VALUES ('com.google.Chrome.beta', 'bundle_prefix', 1, 'system')");
    EXPECT_EQ(categoryOf("com.google.Chrome.beta.x"), "development");
    EXPECT_EQ(categoryOf("com.google.Chrome"), "browser");
}

TEST_F(CategoryStoreTest, AnAsteriskIsAnOrdinaryCharacter)
{
    EXPECT_EQ(categoryOf("com.google.Chrome.app.abc.sheets"), "browser");
    EXPECT_EQ(categoryOf("com.google.Chrome.app.*.sheets"), "data_analysis");
}

TEST_F(CategoryStoreTest, RulesOfTheOtherTwoKindsHaveNoEffect)
{
    store.exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
               "VALUES ('org.example', 'bundle_prefix', 10, 'user'), "
               "('org.example.app', 'exact', 10, 'system'), "
               "('org.example.a', 'regex', 10, 'system')");
    EXPECT_EQ(categoryOf("org.example.app"), "uncategorized");
}

TEST_F(CategoryStoreTest, RulesOfMissingCategoriesArePassedOver)
{
    store.exec("DELETE FROM categories WHERE id = 10");
    CategoryStore::setUserCategory(exec, clock, "com.apple.Safari", 10);
    EXPECT_EQ(categoryOf("com.apple.Safari"), "browser");
    store.exec("DELETE FROM categories WHERE id = 2");
    EXPECT_EQ(categoryOf("com.apple.Safari"), "uncategorized");
}

TEST_F(CategoryStoreTest, WithoutRulesAllIsUncategorized)
{
    const CategoryName uncategorized{"uncategorized", "未分类"};
    EXPECT_EQ(CategoryStore::classify({}, "com.apple.Safari", "Safari"), uncategorized);
    store.exec("DROP TABLE app_categories; DROP TABLE categories");
    const RuleSet rules = CategoryStore::loadRuleSet(store.handle());
    EXPECT_THAT(rules.catInfo, IsEmpty());
    EXPECT_EQ(CategoryStore::classify(rules, "com.apple.Safari", ""), uncategorized);
}

TEST_F(CategoryStoreTest, TheLabelOfTheStoreIsTheOneThatIsShown)
{
    store.exec("UPDATE categories SET key = 'web', label = '网页' WHERE id = 2");
    store.exec("UPDATE categories SET label = '其他' WHERE id = 9");
    const RuleSet rules = CategoryStore::loadRuleSet(store.handle());
    EXPECT_EQ(
        CategoryStore::classify(rules, "com.apple.Safari", ""), (CategoryName{"web", "网页"}));
    EXPECT_EQ(
        CategoryStore::classify(rules, std::nullopt, ""), (CategoryName{"uncategorized", "其他"}));
}

TEST_F(CategoryStoreTest, RowsOfOtherTypesDontCount)
{
    store.exec("UPDATE categories SET label = x'00' WHERE id = 3");
    store.exec("UPDATE app_categories SET category_id = 2.5 WHERE match_key = 'com.bear'");
    const RuleSet rules = CategoryStore::loadRuleSet(store.handle());
    EXPECT_THAT(rules.catInfo, SizeIs(12));
    EXPECT_EQ(CategoryStore::classify(rules, "com.bear", "").key, "uncategorized");
}

TEST_F(CategoryStoreTest, TextsEndAtANulAndAreWellFormed)
{
    store.exec("UPDATE categories SET label = CAST(x'41FF42004300' AS TEXT) WHERE id = 3");
    store.exec("UPDATE app_categories SET match_key = CAST(x'6100' AS TEXT), category_id = 3 "
               "WHERE match_key = 'com.bear'");
    const RuleSet rules = CategoryStore::loadRuleSet(store.handle());
    EXPECT_EQ(CategoryStore::classify(rules, "a", "").label, "A\uFFFDB");
}

TEST_F(CategoryStoreTest, ChoosingTwiceLeavesOneRow)
{
    CategoryStore::setUserCategory(exec, clock, "it's", 3);
    clock.set(1767225700);
    CategoryStore::setUserCategory(exec, clock, "it's", 4);
    EXPECT_THAT(store.rows("SELECT match_key, match_type, category_id, source, updated_at "
                           "FROM app_categories WHERE source = 'user'"),
        ElementsAre("it's|exact|4|user|1767225700.0"));
}

TEST_F(CategoryStoreTest, DistinctAppsAreListedByNameWithoutTheSystems)
{
    store.exec("INSERT INTO app_sessions (app_name, bundle_id) VALUES "
               "('Zed', 'z'), ('Zed', 'z'), ('Mail', ''), ('Mail', NULL), ('Mail', 'm'), "
               "('Quillbrook', 'q'), ('MyLogin', 'l'), ('screensaver', 's'), ('launchd', 'd'), "
               "('quillbrook', 'small'), (x'41', 'blob')");
    EXPECT_THAT(CategoryStore::allDistinctApps(store.handle()),
        ElementsAre(DistinctApp{"Mail", "unknown"}, DistinctApp{"Mail", "m"},
            DistinctApp{"Zed", "z"}, DistinctApp{"quillbrook", "small"}));
}

TEST(SelectableCategories, AreAllButTheUncategorized)
{
    EXPECT_THAT(selectableCategories(), SizeIs(12));
    EXPECT_EQ(selectableCategories().front().label, "开发工具");
    EXPECT_TRUE(std::ranges::none_of(
        selectableCategories(), [](const auto& category) { return category.id == 9; }));
}

TEST(CategoryColors, AreThoseOfTheTable)
{
    EXPECT_THAT(categoryColors(), SizeIs(13));
    EXPECT_EQ(categoryColors().at("travel"), "#06B6D4");
    EXPECT_EQ(categoryIdByKey().at("finance"), 13);
}

} // namespace
} // namespace quillbrook
