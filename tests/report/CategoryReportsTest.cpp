#include "tests/report/ReportFixture.h"

#include "categories/CategoryStore.h"
#include "report/CategoryReports.h"

#include <set>

namespace quillbrook {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class CategoryReportsTest : public ReportFixture {
protected:
    std::vector<CategoryTrendPoint> trend() const
    {
        const StoreReader store(path());
        return computeTrend(
            store.handle(), CategoryStore::loadRuleSet(store.handle()), machine.clock.now());
    }
};

TEST_F(CategoryReportsTest, APeriodWithoutSessionsIsEmpty)
{
    const auto data = read({.tab = NavTab::habit});
    EXPECT_THAT(data.categoryUsage, IsEmpty());
    EXPECT_EQ(data.totalActiveSeconds, 0);
}

TEST_F(CategoryReportsTest, SharesAddUpAndApplicationsCountOnce)
{
    session("Safari", 0, 100, "com.apple.Safari");
    session("Safari", 200, 300, "com.apple.Safari");
    session("Chrome", 400, 500, "com.google.Chrome");
    session("Thing", 600, 601, "");
    session("Other", 700, 701.5, "zz.zz");
    const auto data = read({.tab = NavTab::habit});
    ASSERT_THAT(data.categoryUsage, SizeIs(2));
    EXPECT_EQ(data.categoryUsage[0].appCount, 2);
    EXPECT_EQ(data.categoryUsage[0].sessionCount, 3);
    EXPECT_EQ(data.categoryUsage[1].label, "未分类");
    EXPECT_EQ(data.categoryUsage[1].appCount, 2);
    EXPECT_EQ(data.totalActiveSeconds, 302.5);
    EXPECT_DOUBLE_EQ(data.categoryUsage[0].pct + data.categoryUsage[1].pct, 1);
    EXPECT_THAT(data.categorySessions, IsEmpty());
}

TEST_F(CategoryReportsTest, ApplicationsAreToldApartByNameAndIdentifierTogether)
{
    session("b", 0, 10, "com.apple.Safaria");
    session("ab", 20, 30, "com.apple.Safari");
    session("b", 40, 50, "");
    exec("INSERT INTO app_sessions (app_name, bundle_id, started_at, ended_at, duration_sec) "
         "VALUES ('b', NULL, 1767200000, 1767200010, 10)");
    const auto usage = read({.tab = NavTab::habit}).categoryUsage;
    ASSERT_THAT(usage, SizeIs(2));
    EXPECT_EQ(usage[0].appCount + 10 * usage[1].appCount, usage[0].category == "browser" ? 12 : 21);
    EXPECT_EQ(usage[0].sessionCount, 2);
}

TEST_F(CategoryReportsTest, AnApplicationOfAChangedCategoryCountsThereAlone)
{
    session("Safari", 0, 100, "com.apple.Safari");
    session("Safari", 200, 300, "com.apple.Safari");
    exec("INSERT INTO app_categories (match_key, match_type, category_id, source) "
         "VALUES ('com.apple.Safari', 'exact', 10, 'user')");
    const auto usage = read({.tab = NavTab::habit}).categoryUsage;
    ASSERT_THAT(usage, SizeIs(1));
    EXPECT_EQ(usage[0].category, "gaming");
    EXPECT_EQ(usage[0].label, "游戏");
    EXPECT_EQ(usage[0].appCount, 1);
    EXPECT_EQ(usage[0].pct, 1);
}

TEST_F(CategoryReportsTest, ProgramsOfTheSystemAndRunningSessionsDontCount)
{
    for (const char* name : {"loginwindow", "MyLoginTool", "xscreensaver-demo", "Quillbrook"}) {
        session(name, 100, 160);
    }
    exec("INSERT INTO app_sessions (app_name, started_at) VALUES ('Running', 1767200000)");
    EXPECT_THAT(read({.tab = NavTab::habit}).categoryUsage, IsEmpty());
    EXPECT_THAT(trend(), IsEmpty());
}

TEST_F(CategoryReportsTest, TheLargestCategoryComesFirst)
{
    session("Safari", 0, 10, "com.apple.Safari");
    session("Mail", 20, 50, "com.apple.mail");
    session("Xcode", 60, 80, "com.apple.dt.Xcode");
    const auto usage = read({.tab = NavTab::habit}).categoryUsage;
    ASSERT_THAT(usage, SizeIs(3));
    EXPECT_EQ(usage[0].category, "communication");
    EXPECT_EQ(usage[1].category, "development");
    EXPECT_EQ(usage[2].category, "browser");
}

TEST_F(CategoryReportsTest, TheTrendHasTheDayOnWhichASessionBegan)
{
    session("A", -1, 3600);
    session("A", 0, 1800);
    const auto points = trend();
    ASSERT_THAT(points, SizeIs(2));
    EXPECT_EQ(points[0].date, kMidnight - 86400);
    EXPECT_EQ(points[0].hours, 3601.0 / 3600);
    EXPECT_EQ(points[1].date, kMidnight);
    EXPECT_EQ(points[1].hours, 0.5);
}

TEST_F(CategoryReportsTest, TheTrendHasFifteenDays)
{
    for (int day = 0; day <= 20; ++day) {
        session("A", -day * 86400.0, -day * 86400.0 + 60);
    }
    std::set<double> dates;
    for (const CategoryTrendPoint& point : trend()) {
        dates.insert(point.date);
    }
    EXPECT_THAT(dates, SizeIs(15));
    EXPECT_EQ(*dates.begin(), kMidnight - 14 * 86400);
    EXPECT_EQ(*dates.rbegin(), kMidnight);
}

} // namespace
} // namespace quillbrook
