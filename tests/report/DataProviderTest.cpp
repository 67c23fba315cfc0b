#include "tests/report/ReportFixture.h"

#include <filesystem>
#include <fstream>
#include <memory>

namespace quillbrook {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class DataProviderTest : public ReportFixture {
protected:
    void finishWork() { machine.runFor(0); }

    std::unique_ptr<DataProvider> makeProvider()
    {
        return std::make_unique<DataProvider>(machine.platform());
    }
};

TEST_F(DataProviderTest, BeginsWithTodaysRefresh)
{
    session("Editor", 0, 60);
    const auto provider = makeProvider();
    EXPECT_TRUE(provider->isLoading.get());
    EXPECT_FALSE(provider->data.get());
    EXPECT_EQ(provider->sessionsPeriod.get(), SessionsPeriod::hour1);
    EXPECT_EQ(provider->idlesPeriod.get(), IdlesPeriod::today);
    finishWork();
    EXPECT_FALSE(provider->isLoading.get());
    EXPECT_EQ(provider->data.get()->overview->sessionCount, 1);
}

TEST_F(DataProviderTest, APageThatReadsNothingKeepsTheRecord)
{
    session("Editor", 0, 60);
    const auto provider = makeProvider();
    finishWork();
    provider->selectedTab.set(NavTab::life);
    provider->refresh();
    EXPECT_FALSE(provider->isLoading.get());
    EXPECT_TRUE(provider->data.get()->overview);
}

TEST_F(DataProviderTest, APageThatReadsNothingStartsNoWork)
{
    const auto provider = makeProvider();
    finishWork();
    int publications = 0;
    const auto subscription
        = provider->data.observe([&publications](const auto&) { ++publications; });
    for (const NavTab tab : {NavTab::life, NavTab::about}) {
        provider->selectedTab.set(tab);
        provider->refresh();
        finishWork();
    }
    EXPECT_EQ(publications, 0);
}

TEST_F(DataProviderTest, AlertsAreCountedOnTheirPageAlone)
{
    exec("INSERT INTO alerts (timestamp, alert_type, severity, message) "
         "VALUES (1767200000.5, 'high_cpu', 'warning', 'm')");
    for (const auto& tab : allCases<NavTab>) {
        EXPECT_EQ(read({.tab = tab.value}).alertCount, tab.value == NavTab::alerts ? 1 : 0)
            << tab.rawValue;
    }
}

TEST_F(DataProviderTest, AlertsGoBackAsFarAsTheirPeriodAndAreCountedForToday)
{
    for (const int days : {0, 7, 8, 30, 31, 3650, 3651}) {
        exec("INSERT INTO alerts (timestamp, alert_type, severity, message) VALUES ("
            + shortestText(kMidnight - days * 86400.0) + ", 'high_cpu', 'warning', 'm')");
    }
    exec("INSERT INTO alerts (timestamp, alert_type, severity, message) "
         "VALUES (1767200001, x'00', 'warning', 'm'), (1767200001, 'high_cpu', x'00', 'm'), "
         "(1767200001, 'high_cpu', 'warning', x'00'), ('later', 'high_cpu', 'warning', 'm')");
    const auto count = [this](AlertsPeriod period) {
        const auto data = read({.tab = NavTab::alerts, .alertsPeriod = period});
        EXPECT_EQ(data.alertCount, 5);
        return data.alerts.size();
    };
    EXPECT_EQ(count(AlertsPeriod::week), 2U);
    EXPECT_EQ(count(AlertsPeriod::month), 4U);
    EXPECT_EQ(count(AlertsPeriod::all), 6U);
}

TEST_F(DataProviderTest, APageThatReadsNothingPublishesTheEmptyRecordFirst)
{
    const auto provider = makeProvider();
    provider->selectedTab.set(NavTab::about);
    provider->refresh();
    ASSERT_TRUE(provider->data.get());
    EXPECT_FALSE(provider->data.get()->overview);
}

TEST_F(DataProviderTest, OnlyTheSelectedPagesFieldsAreFilled)
{
    exec("INSERT INTO alerts (timestamp, alert_type, severity, message) VALUES "
         "(1767200000.5, 'high_cpu', 'warning', 'm'), (1767200001, 'high_swap', 'critical', 'n'), "
         "(1766500000, 'old', 'warning', 'o')");
    const auto provider = makeProvider();
    provider->selectedTab.set(NavTab::focus);
    provider->refresh();
    finishWork();
    EXPECT_FALSE(provider->data.get()->overview);
    EXPECT_THAT(provider->data.get()->focusHours, SizeIs(16));
    EXPECT_EQ(provider->data.get()->alertCount, 0);
    provider->selectedTab.set(NavTab::alerts);
    provider->refresh();
    finishWork();
    EXPECT_EQ(provider->data.get()->alertCount, 2);
    ASSERT_THAT(provider->data.get()->alerts, SizeIs(2));
    EXPECT_EQ(provider->data.get()->alerts[0].alertType, "high_swap");
    EXPECT_THAT(provider->data.get()->focusHours, IsEmpty());
}

TEST_F(DataProviderTest, EachRefreshPublishesAndTheLastToFinishWins)
{
    session("Editor", 0, 60);
    const auto provider = makeProvider();
    finishWork();
    int publications = 0;
    const auto subscription
        = provider->data.observe([&publications](const auto&) { ++publications; });
    provider->selectedTab.set(NavTab::history);
    provider->refresh();
    provider->selectedTab.set(NavTab::session);
    provider->refresh();
    provider->selectedTab.set(NavTab::habit);
    finishWork();
    EXPECT_EQ(publications, 2);
    EXPECT_FALSE(provider->data.get()->historyOverview);
    EXPECT_THAT(provider->categoryTrend.get(), IsEmpty()); // nobody asked for Habit
}

TEST_F(DataProviderTest, TheTrendFollowsTheHabitPage)
{
    session("Editor", 0, 3600);
    const auto provider = makeProvider();
    std::vector<std::string> order;
    const auto first = provider->data.observe([&order](const auto& data) {
        order.emplace_back(data->categoryUsage.empty() ? "today" : "habit");
    });
    const auto second
        = provider->categoryTrend.observe([&order](const auto&) { order.emplace_back("trend"); });
    provider->selectedTab.set(NavTab::habit);
    provider->refresh();
    finishWork();
    EXPECT_THAT(order, testing::ElementsAre("today", "habit", "trend"));
    EXPECT_THAT(provider->categoryTrend.get(), SizeIs(1));
}

TEST_F(DataProviderTest, AProviderThatWentPublishesNothing)
{
    auto provider = makeProvider();
    provider->selectedTab.set(NavTab::habit);
    provider->refresh();
    provider.reset();
    finishWork();
}

TEST_F(DataProviderTest, AMissingOrForeignStoreIsEmpty)
{
    fs::remove(path());
    EXPECT_FALSE(read({.tab = NavTab::today}).overview);
    EXPECT_FALSE(fs::exists(path()));
    std::ofstream(path()) << "this is no database, but a text that is long enough to be one";
    const auto foreign = read({.tab = NavTab::today});
    EXPECT_EQ(foreign.overview->sessionCount, 0);
    EXPECT_THAT(foreign.keylogHourly, SizeIs(24));
}

TEST_F(DataProviderTest, ChangingACategoryTellsItsSteps)
{
    session("Editor", 0, 60, "org.o'ed");
    const auto provider = makeProvider();
    finishWork();
    provider->selectedTab.set(NavTab::habit);
    testing::internal::CaptureStdout();
    provider->changeAppCategory("org.o'ed", 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[changeAppCategory] bundleId=org.o'ed, categoryId=1\n"
        "[changeAppCategory] SQL 成功:     INSERT INTO app_categories (match_key, match_type, "
        "category_id, source, upda...\n"
        "[changeAppCategory] DB 已关闭, 调用 refresh\n");
    finishWork();
    EXPECT_NE(provider->data.get()->categoryUsage.at(0).category, "uncategorized");

    testing::internal::CaptureStdout();
    provider->changeAppCategory("org.o'ed", std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[changeAppCategory] bundleId=org.o'ed, categoryId=nil\n"
        "[changeAppCategory] SQL 成功: DELETE FROM app_categories WHERE match_key = 'org.o''ed' "
        "AND source = 'user'...\n"
        "[changeAppCategory] DB 已关闭, 调用 refresh\n");
    finishWork();
    EXPECT_EQ(provider->data.get()->categoryUsage.at(0).category, "uncategorized");
}

TEST_F(DataProviderTest, GivingBackWhatNobodyTookIsASuccess)
{
    exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
         "VALUES ('org.other', 'exact', 10, 'user')");
    const auto provider = makeProvider();
    finishWork();
    const std::string before = StoreReader(path()).value("SELECT COUNT(*) FROM app_categories");
    testing::internal::CaptureStdout();
    provider->changeAppCategory("com.apple.Safari", std::nullopt);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[changeAppCategory] bundleId=com.apple.Safari, categoryId=nil\n"
        "[changeAppCategory] SQL 成功: DELETE FROM app_categories WHERE match_key = "
        "'com.apple.Safari' AND source = 'us...\n"
        "[changeAppCategory] DB 已关闭, 调用 refresh\n");
    EXPECT_TRUE(provider->isLoading.get());
    EXPECT_EQ(StoreReader(path()).value("SELECT COUNT(*) FROM app_categories"), before);
}

TEST_F(DataProviderTest, AChangeThatFailsIsToldAndRefreshesAllTheSame)
{
    exec("DROP TABLE app_categories");
    const auto provider = makeProvider();
    finishWork();
    testing::internal::CaptureStdout();
    provider->changeAppCategory("org.ed", std::nullopt);
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
        HasSubstr("[changeAppCategory] SQL 错误 (rc=1): no such table: app_categories\n"));
    EXPECT_TRUE(provider->isLoading.get());
}

TEST_F(DataProviderTest, AChangeWithoutAStoreStopsThere)
{
    const auto provider = makeProvider();
    finishWork();
    fs::remove(path());
    fs::create_directory(path());
    testing::internal::CaptureStdout();
    provider->changeAppCategory("org.ed", 3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
        "[changeAppCategory] bundleId=org.ed, categoryId=3\n"
        "[changeAppCategory] 无法打开数据库: "
            + path() + "\n");
    EXPECT_FALSE(provider->isLoading.get());
}

} // namespace
} // namespace quillbrook
