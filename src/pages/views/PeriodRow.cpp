#include "pages/views/PeriodRow.h"

#include "pages/kit/BorderedButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/PeriodPicker.h"
#include "report/DataProvider.h"

#include <QHBoxLayout>
#include <QLabel>

namespace quillbrook {

namespace {

constexpr int kPickerWidth = 260;
constexpr int kSpacing = 12;

} // namespace

PeriodRow::PeriodRow(DataProvider& provider, NavTab tab, QWidget* parent)
    : QWidget(parent)
    , row(new QHBoxLayout(this))
{
    auto* refresh = new BorderedButton("arrow.clockwise", "刷新", {});
    connect(refresh, &BorderedButton::clicked, this, [&provider] { provider.refresh(); });
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSpacing);
    row->addWidget(textLabel("时间", Look::font(TextStyle::caption)));
    row->addWidget(new PeriodPicker(provider, tab, kPickerWidth));
    row->addStretch();
    row->addWidget(refresh);
}

void PeriodRow::add(QWidget* widget)
{
    row->insertWidget(row->count() - 1, widget);
}

} // namespace quillbrook
