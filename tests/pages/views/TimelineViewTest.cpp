#include "pages/views/TimelineView.h"
#include "pages/kit/Chip.h"
#include "pages/kit/MarkView.h"
#include "platform/virtual/VirtualUserDefaults.h"
#include "support/BecomesTrue.h"
#include "support/Elements.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<HourlyTimelineEntry> day()
{
    return {{.hour = 9,
                .total = 3600,
                .apps = {{.hour = 9, .appName = "Editor", .seconds = 2400},
                    {.hour = 9, .appName = "Web", .seconds = 1200.5}}},
        {.hour = 14, .total = 59, .apps = {{.hour = 14, .appName = "Web", .seconds = 59}}}};
}

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The first element of that name in a view.
QAccessibleInterface& accessibleNamed(QWidget& view, const QString& name)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
    int index = 0;
    while (index + 1 < interface->childCount()
        && interface->child(index)->text(QAccessible::Name) != name) {
        ++index;
    }
    return *interface->child(index);
}

class TimelineViewTest : public testing::Test {
protected:
    TimelineViewTest()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        view.resize(800, 600);
        view.show();
    }

    std::vector<std::string> checkedChips()
    {
        std::vector<std::string> names;
        for (const Chip* chip : view.findChildren<Chip*>()) {
            if (chip->isChecked()) {
                names.push_back(chip->text().toStdString());
            }
        }
        return names;
    }

    Chip& chip(const QString& name)
    {
        const auto chips = view.findChildren<Chip*>();
        return **std::find_if(
            chips.begin(), chips.end(), [&](const Chip* chip) { return chip->text() == name; });
    }

    VirtualUserDefaults defaults{};
    TimelineView view{defaults};
};

TEST_F(TimelineViewTest, ShowsALineInPlaceOfAnEmptyDay)
{
    EXPECT_THAT(
        namesOf(elementsOf(view, QAccessible::StaticText)), ElementsAre("时间线", "暂无数据"));
    EXPECT_THAT(elementsOf(view, QAccessible::Indicator), IsEmpty());
}

TEST_F(TimelineViewTest, OffersItsBlocksAndTexts)
{
    view.setTimeline(day());
    EXPECT_THAT(elementsOf(view, QAccessible::Indicator),
        ElementsAre(Element{QAccessible::Indicator, "Editor", "2400"},
            Element{QAccessible::Indicator, "Web", "1200.5"},
            Element{QAccessible::Indicator, "Web", "59"}));
    EXPECT_THAT(namesOf(elementsOf(view, QAccessible::StaticText)),
        ElementsAre("时间线", "09:00", "60m", "14:00", "0m"));
    EXPECT_THAT(
        namesOf(elementsOf(view, QAccessible::Button)), ElementsAre("导出 CSV", "Editor", "Web"));
}

TEST_F(TimelineViewTest, HighlightsOneApplicationAtATime)
{
    view.setTimeline(day());
    press(chip("Editor"), Qt::Key_Space);
    EXPECT_THAT(checkedChips(), ElementsAre("Editor"));
    press(chip("Web"), Qt::Key_Space);
    EXPECT_THAT(checkedChips(), ElementsAre("Web"));
    press(chip("Web"), Qt::Key_Space);
    EXPECT_THAT(checkedChips(), IsEmpty());
}

TEST_F(TimelineViewTest, LetsTheOtherApplicationsFade)
{
    view.setTimeline(day());
    const auto strengthOf = [this](const std::string& appName) {
        const auto& marks = view.findChild<MarkView*>()->marks();
        return std::find_if(
            marks.begin(), marks.end(), [&](const Mark& mark) { return mark.name == appName; })
            ->fills[0]
            .opacity;
    };
    press(chip("Editor"), Qt::Key_Space);
    EXPECT_DOUBLE_EQ(strengthOf("Web"), 0.7); // it fades, and does not jump
    becomesTrue([&] { return strengthOf("Web") <= 0.7 * 0.2 + 1e-9; });
    EXPECT_DOUBLE_EQ(strengthOf("Web"), 0.7 * 0.2);
    EXPECT_DOUBLE_EQ(strengthOf("Editor"), 0.7);
}

TEST_F(TimelineViewTest, TellsABlocksDurationInItsToolTip)
{
    view.setTimeline(day());
    auto& chart = *view.findChild<MarkView*>();
    const auto helpAt = [&chart](QPoint place) {
        QHelpEvent event(QEvent::ToolTip, place, chart.mapToGlobal(place));
        QApplication::sendEvent(&chart, &event);
        return event.isAccepted() ? QToolTip::text().toStdString() : std::string("none");
    };
    const QRect block = accessibleNamed(chart, "Editor").rect();
    EXPECT_EQ(helpAt(chart.mapFromGlobal(block.center())), "Editor: 40min");
    EXPECT_EQ(helpAt(QPoint(2, 2)), "none");
}

TEST_F(TimelineViewTest, HasALineOfFortyFourForEachHour)
{
    view.setTimeline(day());
    auto& chart = *view.findChild<MarkView*>();
    const QRect nine = accessibleNamed(chart, "09:00").rect();
    const QRect fourteen = accessibleNamed(chart, "14:00").rect();
    EXPECT_EQ(nine.size(), QSize(50, 44));
    EXPECT_EQ(fourteen.top() - nine.top(), 44);
}

TEST_F(TimelineViewTest, KeepsTheHighlightThroughARefresh)
{
    view.setTimeline(day());
    press(chip("Web"), Qt::Key_Space);
    view.setTimeline(day());
    EXPECT_THAT(checkedChips(), ElementsAre("Web"));
}

TEST_F(TimelineViewTest, WritesTheDayAsItWasAtThePress)
{
    const TemporaryDirectory directory;
    view.setTimeline({day().back()});
    view.exportCSV();
    auto* dialog = view.findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), "导出时间线数据");
    EXPECT_EQ(QFileInfo(dialog->selectedFiles().value(0)).fileName(), "Quillbrook-timeline.csv");
    EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog->mimeTypeFilters(), QStringList("text/csv"));
    view.setTimeline(day()); // a refresh while the dialogue is open

    dialog->setDirectory(QString::fromStdString(directory.path().string()));
    dialog->findChild<QLineEdit*>()->setText("day.csv");
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_EQ(
        contentOf(directory.path() / "day.csv"), "Hour,App,Seconds,Minutes\n14,\"Web\",59,1.0\n");
}

TEST_F(TimelineViewTest, WritesTheDayAlsoWhenThePageGoesMeanwhile)
{
    const TemporaryDirectory directory;
    QWidget window;
    auto* page = new TimelineView(defaults, &window);
    page->setTimeline(day());
    page->exportCSV();
    delete page;
    auto* dialog = window.findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    dialog->setDirectory(QString::fromStdString(directory.path().string()));
    dialog->findChild<QLineEdit*>()->setText("day.csv");
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_THAT(contentOf(directory.path() / "day.csv"), testing::HasSubstr("Editor"));
}

TEST_F(TimelineViewTest, WritesTheHeaderAloneForAnEmptyDay)
{
    const TemporaryDirectory directory;
    view.exportCSV();
    auto* dialog = view.findChild<QFileDialog*>();
    dialog->setDirectory(QString::fromStdString(directory.path().string()));
    dialog->findChild<QLineEdit*>()->setText("empty.csv");
    static_cast<QDialog*>(dialog)->accept();
    EXPECT_EQ(contentOf(directory.path() / "empty.csv"), "Hour,App,Seconds,Minutes\n");
}

TEST_F(TimelineViewTest, WritesNothingWhenTheDialogueIsCancelled)
{
    const TemporaryDirectory directory;
    view.setTimeline(day());
    view.exportCSV();
    auto* dialog = view.findChild<QFileDialog*>();
    dialog->setDirectory(QString::fromStdString(directory.path().string()));
    dialog->reject();
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

} // namespace
} // namespace quillbrook
