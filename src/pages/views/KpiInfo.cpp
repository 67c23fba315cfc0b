#include "pages/views/KpiInfo.h"

#include "pages/figures/TodayFigures.h"
#include "pages/kit/Look.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kBetweenItems = 14;
constexpr int kUnderHeadline = 2;
constexpr int kInItem = 4;
constexpr int kSymbolPixels = 12;
constexpr int kBehindSymbol = 6;

QLayout* infoRow(const InfoItem& item)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(kBehindSymbol);
    const SystemColor color = item.color;
    row->addWidget(new SymbolLabel(toQString(item.symbol), kSymbolPixels,
        [color](const QPalette& palette) { return Look::color(color, palette); }));
    row->addWidget(
        textLabel(toQString(item.name), Look::font(TextStyle::subheadline, QFont::Medium)));
    row->addStretch();
    return row;
}

} // namespace

void fillKpiInfo(QVBoxLayout& column)
{
    column.setSpacing(kBetweenItems);
    QLabel* headline = textLabel("指标说明", Look::font(TextStyle::headline));
    headline->setContentsMargins(0, 0, 0, kUnderHeadline);
    column.addWidget(headline);
    for (const InfoItem& item : kpiInfoItems()) {
        auto* paragraph = new QVBoxLayout;
        paragraph->setSpacing(kInItem);
        paragraph->addLayout(infoRow(item));
        QLabel* detail = secondaryLabel(toQString(item.detail), Look::font(TextStyle::caption));
        detail->setWordWrap(true);
        paragraph->addWidget(detail);
        column.addLayout(paragraph);
    }
}

} // namespace quillbrook
