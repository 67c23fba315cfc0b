#include "shell/MenuBarIcon.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <algorithm>
#include <array>

namespace quillbrook {

namespace {

constexpr std::array kSizes = {16, 22, 24, 32, 48, 64};
constexpr QRgb kPlate = qRgb(0x3A, 0x3A, 0x3C);
constexpr QRgb kRim = qRgb(0x8E, 0x8E, 0x93); // tells the plate from a panel as dark as itself
constexpr QRgb kWarningPlate = qRgb(0xD7, 0x00, 0x15);
constexpr double kCorner = 0.18; // of the size
constexpr double kOneLine = 0.75; // of the height

/// The hours and the minutes, such as "12h" and "34m"; one text where it isn't a time.
QStringList lines(const QString& activeHours)
{
    const auto end = activeHours.indexOf(QLatin1Char('h')) + 1;
    if (end <= 0 || end == activeHours.size()) {
        return {activeHours};
    }
    return {activeHours.left(end), activeHours.mid(end)};
}

/// All that can be read in the smallest size: the hours, or the minutes of the first one.
QString shortFigure(const QString& activeHours)
{
    const QStringList figures = lines(activeHours);
    return figures.first() == QLatin1String("0h") ? figures.last() : figures.first();
}

/// The outline of a text in bold, its ink in the rectangle from 0, 0 on, at an easy size to scale.
QPainterPath outline(const QString& text)
{
    QFont font({QStringLiteral("Inter"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(100);
    font.setWeight(QFont::Bold);
    QPainterPath path;
    path.addText(0, 0, font, text);
    return path.translated(-path.boundingRect().topLeft());
}

/// Draws `text` as large as it fits into `room`, up to `height`, in its middle. A line that is too
/// wide becomes narrower rather than lower.
void drawLine(QPainter& painter, const QString& text, const QRectF& room)
{
    const QPainterPath path = outline(text);
    const QSizeF ink = path.boundingRect().size();
    if (ink.isEmpty()) {
        return;
    }
    const double digitHeight = outline(QStringLiteral("8")).boundingRect().height();
    const double vertical = room.height() / digitHeight;
    const double horizontal = std::min(vertical, room.width() / ink.width());
    QTransform placed;
    placed.translate(room.center().x() - ink.width() * horizontal / 2,
        room.center().y() - ink.height() * vertical / 2);
    placed.scale(horizontal, vertical);
    painter.fillPath(placed.map(path), Qt::white);
}

} // namespace

QPixmap menuBarPixmap(const QString& activeHours, bool isWarning, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);

    const QRectF plate = QRectF(pixmap.rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(isWarning ? QColor(kWarningPlate) : QColor(kRim));
    painter.setBrush(isWarning ? QColor(kWarningPlate) : QColor(kPlate));
    painter.drawRoundedRect(plate, size * kCorner, size * kCorner);

    const QStringList texts
        = size > kSizes.front() ? lines(activeHours) : QStringList{shortFigure(activeHours)};
    const double margin = std::max(1.0, size / 14.0);
    const double gap = std::max(1.0, size / 16.0);
    const QRectF inside = plate.adjusted(margin, margin + 0.5, -margin, -margin - 0.5);
    const bool isOneLine = texts.size() == 1;
    const double height = isOneLine ? inside.height() * kOneLine : (inside.height() - gap) / 2;
    double top = isOneLine ? inside.center().y() - height / 2 : inside.top();
    for (const QString& text : texts) {
        drawLine(painter, text, {inside.left(), top, inside.width(), height});
        top += height + gap;
    }
    return pixmap;
}

QIcon menuBarIcon(const QString& activeHours, bool isWarning)
{
    QIcon icon;
    for (const int size : kSizes) {
        icon.addPixmap(menuBarPixmap(activeHours, isWarning, size));
    }
    return icon;
}

} // namespace quillbrook
