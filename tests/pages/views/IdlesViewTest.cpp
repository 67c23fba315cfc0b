#include "pages/views/IdlesView.h"
#include "support/PagesFixture.h"

#include <gmock/gmock.h>

namespace quillbrook {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class IdlesViewTest : public PagesFixture {
protected:
    static DashboardData twoIdles()
    {
        return {.recentIdles = {{.rowId = 8,
                                    .startedAt = kNow - 4000,
                                    .endedAt = kNow - 400,
                                    .durationSec = 3600,
                                    .sourceType = 9},
                    {.rowId = 7, .startedAt = kNow - 7200}}};
    }

    static std::vector<std::string> texts(QWidget& page)
    {
        return namesOf(elementsOf(page, QAccessible::StaticText));
    }
};

TEST_F(IdlesViewTest, ExplainsItselfAboveTheTable)
{
    const auto page = shownPage<IdlesView>(twoIdles());
    EXPECT_THAT(texts(*page),
        ElementsAre("Idle 明细", "调试用 Idle 空闲时段列表", "2 条空闲记录", "合计 1.00小时",
            "Idle 数据采集逻辑",
            "• source_type 1=HID超时(HIDIdleTime>300s) 2=睡眠 3=锁屏 4=进程退出",
            "• 进入 idle 时立即写入数据库(ended_at=NULL)，恢复时补全 — 即使 crash 数据不丢",
            "• 判定条件：状态机静默 >300s 且 所有HID设备(键盘/鼠标/触控板)无活动 >300s",
            "• 恢复条件：状态机静默 >120s 或 HID设备活动 <10s（快速恢复）", "时间"));
}

TEST_F(IdlesViewTest, PutsTheOpenPeriodOnTop)
{
    const auto page = shownPage<IdlesView>(twoIdles());
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::ColumnHeader)),
        ElementsAre("#", "日期", "开始", "结束", "时长", "来源", "状态"));
    EXPECT_THAT(namesOf(elementsOf(*page, QAccessible::Cell)),
        ElementsAre("7", "今天", "06:00:00", "--:--:--", "0秒", "HID超时", "进行中", "8", "今天",
            "06:53:20", "07:53:20", "1.00小时", "未知", "已结束"));
}

TEST_F(IdlesViewTest, ShowsAPictureWithoutPeriods)
{
    const auto page = shownPage<IdlesView>({});
    EXPECT_THAT(texts(*page), Contains("没有 Idle 记录"));
    EXPECT_THAT(texts(*page), Contains("0 条空闲记录"));
    EXPECT_THAT(texts(*page), Contains("合计 0秒"));
    EXPECT_THAT(elementsOf(*page, QAccessible::Table), IsEmpty());
    page->show(twoIdles());
    EXPECT_THAT(texts(*page), Not(Contains("没有 Idle 记录")));
}

TEST_F(IdlesViewTest, BindsItsPickerAndRefreshes)
{
    const auto page = shownPage<IdlesView>({});
    button(*page, "1小时").click();
    EXPECT_EQ(provider.idlesPeriod.get(), IdlesPeriod::hour1);
    machine.runFor(0);
    int published = 0;
    const Subscription subscription = provider.data.observe([&](const auto&) { ++published; });
    button(*page, "刷新").click();
    machine.runFor(0);
    EXPECT_EQ(published, 1);
}

TEST_F(IdlesViewTest, FitsTheSmallestWindow)
{
    const auto page = shownPage<IdlesView>(twoIdles());
    EXPECT_LE(page->widget()->minimumSizeHint().width(), 820 - 220 - 10);
}

} // namespace
} // namespace quillbrook
