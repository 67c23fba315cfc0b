#include "categories/AppCategoryList.h"

#include "categories/CategoryStore.h"
#include "platform/virtual/VirtualMachine.h"
#include "support/StoreReader.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNow = 1767225600.5;
constexpr std::int64_t kGaming = 10;
constexpr std::int64_t kFinance = 13;

constexpr const char* kTables = R"(
        PRAGMA journal_mode = WAL;
        CREATE TABLE categories (id INTEGER PRIMARY KEY, key TEXT NOT NULL UNIQUE,
            label TEXT NOT NULL, color TEXT NOT NULL);
        CREATE TABLE app_categories (id INTEGER PRIMARY KEY AUTOINCREMENT,
            match_key TEXT NOT NULL, match_type TEXT NOT NULL DEFAULT 'bundle_prefix',
            category_id INTEGER NOT NULL, source TEXT NOT NULL DEFAULT 'system',
            updated_at REAL NOT NULL DEFAULT (strftime('%s', 'now')),
            UNIQUE(match_key, match_type));
        CREATE TABLE app_sessions (id INTEGER PRIMARY KEY, app_name TEXT NOT NULL,
            bundle_id TEXT);
        INSERT INTO app_sessions (app_name, bundle_id) VALUES ('Safari', 'com.apple.Safari'),
            ('editor', 'org.example.editor'), ('Zed', 'dev.zed'), ('Web', 'com.apple.Safari'),
            ('Nameless', NULL), ('Anonymous', '');)";

constexpr const char* kChoices
    = "SELECT match_key, match_type, category_id, source, updated_at FROM app_categories "
      "WHERE source = 'user'";

class AppCategoryListTest : public testing::Test {
protected:
    AppCategoryListTest()
    {
        store->exec(kTables);
        const auto exec = [this](const std::string& sql) { store->exec(sql); };
        exec("BEGIN");
        CategoryStore::seedCategories(exec);
        CategoryStore::seedAppPrefixes(exec);
        exec("COMMIT");
    }

    void choose(const std::string& appName, std::optional<std::int64_t> categoryId)
    {
        list.updateCategory(entry(appName), categoryId);
    }

    const AppEntry& entry(const std::string& appName) const
    {
        return *std::ranges::find(list.apps(), appName, &AppEntry::appName);
    }

    /// The entries as "name|identifier|category key", the overridden with a star.
    static std::vector<std::string> told(const std::vector<AppEntry>& entries)
    {
        std::vector<std::string> lines;
        for (const AppEntry& each : entries) {
            lines.push_back(each.appName + "|" + each.bundleId + "|" + each.categoryKey
                + (each.hasUserOverride ? "*" : ""));
        }
        return lines;
    }

    std::string told(const std::string& appName) const { return told({entry(appName)}).front(); }

    /// The same after a fresh load.
    std::string toldAnew(const std::string& appName)
    {
        list.loadData();
        return told(appName);
    }

    fs::path file() const { return directory.path() / "monitor.db"; }

    TemporaryDirectory directory{};
    VirtualMachine machine{directory.path(), kNow};
    std::unique_ptr<StoreReader> store = std::make_unique<StoreReader>(file());
    AppCategoryList list{machine.platform()};
};

TEST_F(AppCategoryListTest, ListsEachNameWithEachIdentifierByName)
{
    store->exec("INSERT INTO app_sessions (app_name, bundle_id) VALUES ('Zed', 'a.zed')");
    EXPECT_TRUE(list.isLoading());
    list.loadData();
    EXPECT_FALSE(list.isLoading());
    EXPECT_THAT(told(list.apps()),
        ElementsAre("Anonymous|unknown|uncategorized", "editor|org.example.editor|uncategorized",
            "Nameless|unknown|uncategorized", "Safari|com.apple.Safari|browser",
            "Web|com.apple.Safari|browser", "Zed|a.zed|uncategorized",
            "Zed|dev.zed|uncategorized"));
    EXPECT_EQ(entry("Safari").categoryLabel, "浏览器");
}

TEST_F(AppCategoryListTest, KeepsTheStoresOrderAmongNamesThatDifferInCaseAlone)
{
    store->exec("DELETE FROM app_sessions");
    store->exec("INSERT INTO app_sessions (app_name, bundle_id) VALUES "
                "('mail', '1'), ('MAIL', '2'), ('Mail', '3'), ('Éa', '4'), ('éA', '5')");
    list.loadData();
    EXPECT_THAT(told(list.apps()),
        ElementsAre("MAIL|2|uncategorized", "Mail|3|uncategorized", "mail|1|uncategorized",
            "Éa|4|uncategorized", "éA|5|uncategorized"));
}

TEST_F(AppCategoryListTest, FindsNamesInCapitalsAndSmallLettersButNoIdentifiers)
{
    list.loadData();
    list.setSearchText("EDIT");
    EXPECT_THAT(told(list.filteredApps()), ElementsAre("editor|org.example.editor|uncategorized"));
    list.setSearchText("example");
    EXPECT_THAT(list.filteredApps(), IsEmpty());
    list.setSearchText("");
    EXPECT_EQ(list.filteredApps().size(), list.apps().size());
}

TEST_F(AppCategoryListTest, AChoiceIsStoredAndShown)
{
    list.loadData();
    choose("Zed", kGaming);
    EXPECT_EQ(told("Zed"), "Zed|dev.zed|gaming*");
    EXPECT_EQ(entry("Zed").categoryLabel, "游戏");
    EXPECT_THAT(store->rows(kChoices), ElementsAre("dev.zed|exact|10|user|1767225600.5"));
    EXPECT_EQ(toldAnew("Zed"), "Zed|dev.zed|gaming*");
}

TEST_F(AppCategoryListTest, ChoosingTwiceLeavesOneRow)
{
    list.loadData();
    choose("Zed", kGaming);
    machine.runFor(10);
    choose("Zed", kFinance);
    EXPECT_THAT(store->rows(kChoices), ElementsAre("dev.zed|exact|13|user|1767225610.5"));
    EXPECT_EQ(toldAnew("Zed"), "Zed|dev.zed|finance*");
}

TEST_F(AppCategoryListTest, RemovingTheChoiceGivesBackTheRules)
{
    list.loadData();
    choose("Safari", kGaming);
    choose("Safari", std::nullopt);
    EXPECT_EQ(told("Safari"), "Safari|com.apple.Safari|browser");
    EXPECT_THAT(store->rows(kChoices), IsEmpty());
    EXPECT_EQ(toldAnew("Safari"), "Safari|com.apple.Safari|browser");
}

TEST_F(AppCategoryListTest, OnlyTheFirstOfOneIdentifierFollowsBeforeTheNextLoad)
{
    list.loadData();
    choose("Web", kGaming);
    EXPECT_EQ(told("Safari"), "Safari|com.apple.Safari|gaming*");
    EXPECT_EQ(told("Web"), "Web|com.apple.Safari|browser");
    EXPECT_EQ(toldAnew("Web"), "Web|com.apple.Safari|gaming*");
}

TEST_F(AppCategoryListTest, AChoiceForTheUnknownIsMarkedAndWithoutEffect)
{
    list.loadData();
    choose("Nameless", kGaming);
    EXPECT_EQ(told("Anonymous"), "Anonymous|unknown|uncategorized*");
    EXPECT_EQ(toldAnew("Nameless"), "Nameless|unknown|uncategorized*");
    EXPECT_THAT(store->rows(kChoices), ElementsAre("unknown|exact|10|user|1767225600.5"));
}

TEST_F(AppCategoryListTest, QuotesDontEndTheIdentifier)
{
    store->exec("INSERT INTO app_sessions (app_name, bundle_id) VALUES ('Odd', 'it''s')");
    list.loadData();
    choose("Odd", kGaming);
    EXPECT_EQ(toldAnew("Odd"), "Odd|it's|gaming*");
    choose("Odd", std::nullopt);
    EXPECT_EQ(toldAnew("Odd"), "Odd|it's|uncategorized");
}

TEST_F(AppCategoryListTest, AUsersChoiceOfAnotherKindGoesWithIt)
{
    store->exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
                "VALUES ('dev.zed', 'bundle_prefix', 3, 'user')");
    list.loadData();
    EXPECT_EQ(told("Zed"), "Zed|dev.zed|uncategorized");
    choose("Zed", kGaming);
    EXPECT_THAT(store->rows(kChoices), ElementsAre("dev.zed|exact|10|user|1767225600.5"));
}

TEST_F(AppCategoryListTest, ARowOfTheSystemsStandsInTheWayOfAChoice)
{
    store->exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
                "VALUES ('dev.zed', 'exact', 3, 'system')");
    list.loadData();
    choose("Zed", kGaming);
    EXPECT_EQ(told("Zed"), "Zed|dev.zed|uncategorized*");
    EXPECT_EQ(toldAnew("Zed"), "Zed|dev.zed|uncategorized");
}

TEST_F(AppCategoryListTest, AnApplicationThatIsNotListedIsStoredAllTheSame)
{
    list.loadData();
    list.updateCategory({.appName = "Gone", .bundleId = "org.example.gone"}, kGaming);
    EXPECT_THAT(store->rows(kChoices), ElementsAre("org.example.gone|exact|10|user|1767225600.5"));
    EXPECT_THAT(told(list.apps()), testing::Not(testing::Contains(testing::EndsWith("*"))));
}

TEST_F(AppCategoryListTest, AWriterThatHoldsTheStoreIsNotWaitedFor)
{
    list.loadData();
    choose("Safari", kFinance);
    const StoreReader writer(file());
    writer.exec("BEGIN IMMEDIATE");
    const auto start = std::chrono::steady_clock::now();
    choose("Safari", kGaming);
    choose("Zed", kGaming);
    // Whoever waits does so for seconds; what is refused at once takes no hundredth of one.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    writer.exec("COMMIT");
    EXPECT_EQ(told("Safari"), "Safari|com.apple.Safari|finance*");
    EXPECT_EQ(told("Zed"), "Zed|dev.zed|uncategorized*");
    EXPECT_THAT(store->rows(kChoices), ElementsAre("com.apple.Safari|exact|13|user|1767225600.5"));
    EXPECT_EQ(toldAnew("Zed"), "Zed|dev.zed|uncategorized");
}

TEST_F(AppCategoryListTest, TheListIsReadWhileAWriterHoldsTheStore)
{
    const StoreReader writer(file());
    writer.exec("BEGIN IMMEDIATE");
    list.loadData();
    EXPECT_EQ(list.apps().size(), 6U);
}

TEST_F(AppCategoryListTest, AStoreThatCanOnlyBeReadIsListedAndStaysAsItIs)
{
    store->exec("PRAGMA journal_mode = DELETE");
    store.reset();
    {
        // SQLite only reads a file whose header names a later version for writers. Permissions
        // would not hold back a superuser, who runs tests in containers.
        std::fstream header(file(), std::ios::binary | std::ios::in | std::ios::out);
        header.seekp(18);
        header.put('\x03');
    }
    list.loadData();
    EXPECT_EQ(list.apps().size(), 6U);
    choose("Zed", kGaming);
    EXPECT_EQ(told("Zed"), "Zed|dev.zed|uncategorized*");
    EXPECT_EQ(toldAnew("Zed"), "Zed|dev.zed|uncategorized");
}

TEST_F(AppCategoryListTest, ADirectoryThatGoesAwayLeavesTheEntriesAsTheyWere)
{
    list.loadData();
    store.reset();
    fs::remove_all(directory.path());
    choose("Zed", kGaming);
    EXPECT_EQ(told("Zed"), "Zed|dev.zed|uncategorized");
    EXPECT_EQ(list.apps().size(), 6U);
    EXPECT_FALSE(fs::exists(file()));
}

TEST_F(AppCategoryListTest, AFileThatGoesAwayTakesTheRulesWithIt)
{
    list.loadData();
    store.reset();
    fs::remove(file());
    choose("Safari", kGaming);
    EXPECT_EQ(told("Safari"), "Safari|com.apple.Safari|uncategorized*");
    EXPECT_EQ(entry("Safari").categoryLabel, "未分类");
}

TEST_F(AppCategoryListTest, WithoutAStoreTheListStaysEmpty)
{
    store.reset();
    fs::remove_all(directory.path());
    list.loadData();
    EXPECT_FALSE(list.isLoading());
    EXPECT_THAT(list.apps(), IsEmpty());
    EXPECT_THAT(list.filteredApps(), IsEmpty());
}

TEST_F(AppCategoryListTest, AFileThatIsNoStoreGivesAnEmptyList)
{
    store.reset();
    fs::remove(file());
    std::ofstream(file()) << std::string(5000, 'x');
    list.loadData();
    EXPECT_FALSE(list.isLoading());
    EXPECT_THAT(list.apps(), IsEmpty());
}

} // namespace
} // namespace quillbrook
