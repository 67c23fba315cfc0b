#include "pages/views/VerticalChineseText.h"

#include "pages/kit/Look.h"

#include <QPainter>

#include <algorithm>

namespace quillbrook {

namespace {

constexpr int kPixels = 14;
constexpr int kColumnWidth = 16;
constexpr int kColumnSpacing = 6;
constexpr int kCharacterHeight = 17;
constexpr double kOpacity = 0.45;

} // namespace

VerticalChineseText::VerticalChineseText(const QStringList& lines, QWidget* parent)
    : DrawnView(parent)
    , lines(lines)
{
    setFixedSize(sizeHint());
}

QSize VerticalChineseText::sizeHint() const
{
    qsizetype longest = 0;
    for (const QString& line : lines) {
        longest = std::max(longest, line.size());
    }
    const int columns = static_cast<int>(lines.size());
    return {columns * (kColumnWidth + kColumnSpacing) - kColumnSpacing,
        static_cast<int>(longest) * kCharacterHeight};
}

QRectF VerticalChineseText::columnRect(qsizetype column) const
{
    return {static_cast<double>(column * (kColumnWidth + kColumnSpacing)), 0, kColumnWidth,
        static_cast<double>(lines[column].size() * kCharacterHeight)};
}

std::vector<DrawnItem> VerticalChineseText::drawnItems() const
{
    std::vector<DrawnItem> items;
    for (qsizetype column = 0; column < lines.size(); ++column) {
        items.push_back({DrawnRole::text, lines[column], {}, columnRect(column)});
    }
    return items;
}

void VerticalChineseText::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setFont(Look::systemFont(kPixels));
    painter.setPen(Look::faded(Look::secondaryText(palette()), kOpacity));
    for (qsizetype column = 0; column < lines.size(); ++column) {
        QRectF place = columnRect(column);
        place.setHeight(kCharacterHeight);
        for (const QChar character : lines[column]) {
            painter.drawText(place, Qt::AlignCenter, QString(character));
            place.translate(0, kCharacterHeight);
        }
    }
}

} // namespace quillbrook
