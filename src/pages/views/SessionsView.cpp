#include "pages/views/SessionsView.h"

#include "pages/kit/Look.h"
#include "pages/kit/MenuPicker.h"
#include "pages/kit/NoteBox.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/ComputerCalendar.h"
#include "pages/views/PeriodRow.h"
#include "pages/views/RecordTable.h"
#include "platform/LocaleText.h"
#include "platform/Platform.h"
#include "platform/qt/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kAppWidth = 130;
constexpr int kCloseTypeWidth = 100;
constexpr int kStatusWidth = 110;
constexpr int kFilterSpacing = 16;
constexpr int kBehindCaption = 6;

const QStringList kNotes{
    "• close_type 0=switch(切换应用) 1=idle_recover(空闲恢复) 2=sleep_recover(睡眠恢复) "
    "3=lock_recover(锁屏恢复) 5=startup(引擎启动)",
    "• 进入 active 时立即 INSERT 写入数据库(ended_at=NULL)，切换/关闭时 UPDATE 补全 — 即使 crash "
    "数据不丢",
    "• 去抖机制：新 app 需持续聚焦 2s 才确认切换，避免快速划过",
    "• 判定条件：状态机静默 >300s 且 HID设备(键盘/鼠标/触控板)无活动 >300s 则进入 idle",
    "• 恢复条件：状态机静默 >120s 或 HID设备活动 <10s 则恢复 active"};

/// Adds a picker with its caption to a row.
void addFilter(QHBoxLayout& row, const QString& caption, MenuPicker* picker)
{
    auto* both = new QHBoxLayout;
    both->setSpacing(kBehindCaption);
    both->addWidget(secondaryLabel(caption, Look::font(TextStyle::caption)));
    both->addWidget(picker);
    row.addLayout(both);
}

QStringList labelsOf(std::span<const FilterOption> options)
{
    QStringList labels;
    for (const FilterOption& option : options) {
        labels.append(toQString(option.label));
    }
    return labels;
}

} // namespace

SessionsView::SessionsView(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 16}, parent)
    , platform(tools.platform)
    , count(secondaryLabel({}, Look::monospacedFont(TextStyle::caption)))
    , shownCount(secondaryLabel({}, Look::font(TextStyle::caption)))
    , appPicker(new MenuPicker("应用", kAppWidth))
    , table(new RecordTable(
          "Session 明细", sessionColumns(), "doc.text.magnifyingglass", "没有符合条件的 Session"))
{
    auto* head = new PageHead(plainTitle("Session 明细", TextStyle::title, "调试用 Session 列表"));
    head->add(count);
    column()->addWidget(head);
    column()->addWidget(new NoteBox(SystemColor::green, "Session 数据采集逻辑", kNotes));
    auto* period = new PeriodRow(tools.provider, NavTab::session);
    period->add(shownCount);
    column()->addWidget(period);
    column()->addLayout(makeFilters());
    column()->addWidget(table, 1);
    show(DashboardData{});
}

QLayout* SessionsView::makeFilters()
{
    const auto optionPicker = [this](const QString& name, int width,
                                  std::span<const FilterOption> options, std::string& picked) {
        auto* picker = new MenuPicker(name, width);
        picker->setChoices(labelsOf(options));
        connect(picker, &MenuPicker::picked, this, [this, options, &picked](int index) {
            picked = options[static_cast<std::size_t>(index)].value;
            showRows();
        });
        return picker;
    };
    connect(appPicker, &MenuPicker::picked, this, [this](int index) {
        filter.app = index == 0 ? std::string() : apps[static_cast<std::size_t>(index) - 1];
        showRows();
    });
    auto* row = new QHBoxLayout;
    row->setSpacing(kFilterSpacing);
    addFilter(*row, "应用", appPicker);
    addFilter(
        *row, "关闭", optionPicker("关闭", kCloseTypeWidth, closeTypeOptions, filter.closeType));
    addFilter(*row, "状态", optionPicker("状态", kStatusWidth, statusOptions, filter.status));
    row->addStretch();
    return row;
}

void SessionsView::show(const DashboardData& data)
{
    sessions = data.recentSessions;
    count->setText(toQString(sessionCountText(sessions.size())));
    showApps();
    showRows();
}

void SessionsView::showApps()
{
    apps = uniqueApps(sessions);
    QStringList choices{"全部"};
    for (const std::string& app : apps) {
        choices.append(toQString(app));
    }
    appPicker->setChoices(choices);
    const auto picked = std::ranges::find(apps, filter.app);
    if (filter.app.empty()) {
        appPicker->setCurrent(0);
    } else if (picked != apps.end()) {
        appPicker->setCurrent(static_cast<int>(picked - apps.begin()) + 1);
    } else {
        appPicker->showOther(toQString(filter.app)); // the filter outlives its application
    }
}

void SessionsView::showRows()
{
    std::vector<SessionDetail> rows
        = filteredSessions(sessions, filter, [this](std::string_view text, std::string_view part) {
              return platform.localeText.containsIgnoringCase(text, part);
          });
    shownCount->setText(QString::number(rows.size()));
    const std::size_t size = rows.size();
    table->setRows(
        size, [rows = std::move(rows), calendar = computerCalendar(platform)](int row, int column) {
            return sessionCell({rows[static_cast<std::size_t>(row)]}, column, calendar);
        });
}

} // namespace quillbrook
