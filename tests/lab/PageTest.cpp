#include "base/Text.h"
#include "report/Periods.h"
#include "support/LabRun.h"
#include "support/StoreReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>

#include <string>

namespace quillbrook {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The page command on a store with ten minutes in one application, from 00:01:00 UTC on.
class PageTest : public testing::Test {
protected:
    PageTest()
    {
        lab.write("s.jsonl", R"({"front":{"name":"Editor","bundle":"com.apple.dt.Xcode"}}
{"at":0,"engine":"start"}
{"at":59,"input":0}
{"at":660,"engine":"stop"}
)");
        lab.run("replay " + lab.path("s.jsonl") + " --data " + lab.path("data"));
    }

    LabResult page(const std::string& options)
    {
        return lab.run("page --data " + lab.path("data") + " --now 1767227400 " + options);
    }

    LabRun lab{};
};

TEST_F(PageTest, WritesWhatAScreenReaderFinds)
{
    const LabResult result = page("--tab Today --text " + lab.path("text"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    const std::string text = lab.read("text");
    EXPECT_THAT(text,
        StartsWith(R"({"role": "window", "name": "Quillbrook", "value": "", )"
                   R"("rect": [0, 0, 960, 680]})"
                   "\n"));
    EXPECT_THAT(text, HasSubstr(R"({"role": "row", "name": "Past", "value": "")"));
    EXPECT_THAT(text, HasSubstr(R"({"role": "picker", "name": "时段", "value": "今日")"));
    EXPECT_THAT(text, HasSubstr(R"({"role": "segment", "name": "昨日", "value": "")"));
    EXPECT_THAT(text, HasSubstr(R"({"role": "text", "name": "2 个会话", "value": "08:01")"));
    EXPECT_THAT(text, HasSubstr(R"({"role": "mark", "name": "Editor", "value": "600")"));
    EXPECT_THAT(text, HasSubstr(R"({"role": "button", "name": "导出 CSV", "value": "")"));
}

TEST_F(PageTest, EveryPageOpensOnADamagedStore)
{
    for (const char* number : {"9e999", "1.7e308"}) {
        StoreReader(lab.path("data/monitor.db"))
            .exec(filled("UPDATE app_sessions SET duration_sec = {};"
                         "INSERT INTO app_sessions (app_name, started_at, ended_at, duration_sec) "
                         "VALUES ('Mail', 1767226000, {}, 60), ('Mail', {}, 1767226000, {});"
                         "INSERT INTO keystrokes (timestamp, app_name, input_method, "
                         "keystroke_count) VALUES (1767226000, 'Mail', 'english', {});"
                         "INSERT INTO idle_periods (started_at, ended_at, duration_sec) "
                         "VALUES (1767226000, {}, {})",
                {number, number, number, number, number, number, number}));
        for (const auto& tab : allCases<NavTab>) {
            const LabResult result = page("--full --tab " + std::string(tab.rawValue));
            EXPECT_EQ(result.status, 0) << number << " " << tab.rawValue << result.output;
        }
    }
}

TEST_F(PageTest, ShowsTheCellsOfThePast)
{
    EXPECT_EQ(page("--tab Past --period 本周 --text " + lab.path("text")).status, 0);
    EXPECT_THAT(lab.read("text"), HasSubstr(R"("role": "cell", "name": "Editor", "value": "10m")"));
    EXPECT_THAT(
        lab.read("text"), HasSubstr(R"("role": "picker", "name": "时段", "value": "本周")"));
}

TEST_F(PageTest, ListsARowOfATableAsAWholeAndByCell)
{
    EXPECT_EQ(page("--tab Sessions --text " + lab.path("text")).status, 0);
    const std::string text = lab.read("text");
    EXPECT_THAT(text, HasSubstr(R"("role": "picker", "name": "状态", "value": "全部")"));
    EXPECT_THAT(text, HasSubstr(R"("role": "text", "name": "时长", "value": "")"));
    EXPECT_THAT(text,
        HasSubstr(R"("role": "row", "name": "Editor", )"
                  R"("value": "今天, 08:01:00, 08:07:00, 6.0分钟, idle_recover, recover")"));
    EXPECT_THAT(text, HasSubstr(R"("role": "text", "name": "08:07:00", "value": "")"));
}

TEST_F(PageTest, GrowsUntilAllRowsOfATableAreSeen)
{
    EXPECT_EQ(page("--tab Sessions --size 820x300 --full --png " + lab.path("p.png")).status, 0);
    EXPECT_GT(QImage(QString::fromStdString(lab.path("p.png"))).height(), 500);
}

TEST_F(PageTest, DrawsInTheSizeAndScaleThatAreAskedFor)
{
    EXPECT_EQ(page("--tab Past --size 820x560 --scale 1.5 --png " + lab.path("p.png")).status, 0);
    const QImage image(QString::fromStdString(lab.path("p.png")));
    EXPECT_EQ(image.size(), QSize(1230, 840));
}

TEST_F(PageTest, DrawsDarkWhenAsked)
{
    EXPECT_EQ(page("--tab Past --dark --png " + lab.path("p.png")).status, 0);
    const QImage image(QString::fromStdString(lab.path("p.png")));
    EXPECT_EQ(image.pixelColor(image.width() - 4, image.height() - 4), QColor(0x1E, 0x1E, 0x1E));
}

TEST_F(PageTest, GrowsUntilNothingScrolls)
{
    EXPECT_EQ(page("--tab Past --full --png " + lab.path("p.png")).status, 0);
    const QImage image(QString::fromStdString(lab.path("p.png")));
    EXPECT_EQ(image.width(), 960);
    EXPECT_GT(image.height(), 800);
}

TEST_F(PageTest, WritesTheTimelineAsCsv)
{
    EXPECT_EQ(page("--tab Today --csv " + lab.path("day.csv")).status, 0);
    EXPECT_EQ(lab.read("day.csv"), "Hour,App,Seconds,Minutes\n8,\"Editor\",600,10.0\n");
}

TEST_F(PageTest, TurnsWrongArgumentsDown)
{
    EXPECT_EQ(page("--tab Tomorrow").status, 2);
    EXPECT_EQ(page("--tab Today --period 本周").status, 2);
    EXPECT_EQ(page("--tab Future --period 今日").status, 2);
    EXPECT_EQ(page("--tab Past --csv " + lab.path("day.csv")).status, 2);
    EXPECT_EQ(page("--tab Past --size 960").status, 2);
    EXPECT_EQ(page("--tab Past --size 0x680").status, 2);
    EXPECT_EQ(page("--tab Past --defaults " + lab.path("none")).status, 2);
    EXPECT_THAT(page("--tab Tomorrow").errors, StartsWith("quillbrook-lab: arguments:"));
}

TEST_F(PageTest, ShowsAnEmptyDayWithoutAStore)
{
    const LabResult result = lab.run("page --data " + lab.path("none") + " --tab Today --text "
        + lab.path("text") + " --csv " + lab.path("day.csv"));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(lab.read("text"), HasSubstr("暂无数据"));
    EXPECT_EQ(lab.read("day.csv"), "Hour,App,Seconds,Minutes\n");
}

} // namespace
} // namespace quillbrook
