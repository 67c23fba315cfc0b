#include "pages/views/IdlesView.h"

#include "pages/figures/IdlesFigures.h"
#include "pages/kit/Look.h"
#include "pages/kit/NoteBox.h"
#include "pages/kit/PageHead.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/TintedLabel.h"
#include "pages/views/ComputerCalendar.h"
#include "pages/views/PeriodRow.h"
#include "pages/views/RecordTable.h"
#include "platform/qt/QtText.h"

#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kBetweenFigures = 2;

const QStringList kNotes{"• source_type 1=HID超时(HIDIdleTime>300s) 2=睡眠 3=锁屏 4=进程退出",
    "• 进入 idle 时立即写入数据库(ended_at=NULL)，恢复时补全 — 即使 crash 数据不丢",
    "• 判定条件：状态机静默 >300s 且 所有HID设备(键盘/鼠标/触控板)无活动 >300s",
    "• 恢复条件：状态机静默 >120s 或 HID设备活动 <10s（快速恢复）"};

} // namespace

IdlesView::IdlesView(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 16}, parent)
    , platform(tools.platform)
    , count(secondaryLabel({}, Look::monospacedFont(TextStyle::caption)))
    , total(
          new TintedLabel({}, Look::monospacedFont(TextStyle::caption), Tint{SystemColor::orange}))
    , table(new RecordTable("Idle 明细", idleColumns(), "moon.zzz", "没有 Idle 记录"))
{
    auto* figures = new QWidget;
    auto* lines = new QVBoxLayout(figures);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(kBetweenFigures);
    lines->addStretch();
    lines->addWidget(count, 0, Qt::AlignRight);
    lines->addWidget(total, 0, Qt::AlignRight);
    lines->addStretch();
    auto* head
        = new PageHead(plainTitle("Idle 明细", TextStyle::title, "调试用 Idle 空闲时段列表"));
    head->add(figures);
    column()->addWidget(head);
    column()->addWidget(new NoteBox(SystemColor::blue, "Idle 数据采集逻辑", kNotes));
    column()->addWidget(new PeriodRow(tools.provider, NavTab::idles));
    column()->addWidget(table, 1);
    show(DashboardData{});
}

void IdlesView::show(const DashboardData& data)
{
    std::vector<IdleRecord> idles = sortedIdles(data.recentIdles);
    count->setText(toQString(idleCountText(idles.size())));
    total->setText("合计 " + toQString(totalDurationText(idles)));
    const std::size_t size = idles.size();
    table->setRows(size,
        [idles = std::move(idles), calendar = computerCalendar(platform)](int row, int column) {
            return idleCell({idles[static_cast<std::size_t>(row)]}, column, calendar);
        });
}

} // namespace quillbrook
