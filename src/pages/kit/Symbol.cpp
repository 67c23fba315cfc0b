#include "pages/kit/Symbol.h"

#include "base/Fatal.h"
#include "pages/kit/SymbolTable.h"

#include <QHash>
#include <QPainter>
#include <QPainterPathStroker>
#include <QPixmap>
#include <QTransform>

#include <algorithm>
#include <string>
#include <string_view>

namespace quillbrook::Symbol {

namespace {

constexpr double kGrid = 24;
constexpr double kStroke = 1.9; // grid units; the one weight of all symbols
// Paths are combined on a finer grid, as combining turns curves into lines of a set fineness.
constexpr double kFineness = 32;

constexpr std::string_view kNothing
    = "s M 4 8 V 4 H 8 M 16 4 H 20 V 8 M 20 16 V 20 H 16 M 8 20 H 4 V 16";

/// Reads a path word by word.
class PathReader {
public:
    explicit PathReader(const QString& text) : words(text.split(' ', Qt::SkipEmptyParts)) {}

    QPainterPath read()
    {
        while (place < words.size()) {
            element(words[place++].at(0).toLatin1());
        }
        return path;
    }

private:
    double number() { return words[place++].toDouble(); }

    QPointF point()
    {
        const double x = number();
        return {x, number()};
    }

    void element(char letter)
    {
        switch (letter) {
        case 'M':
            path.moveTo(point());
            break;
        case 'L':
            path.lineTo(point());
            break;
        case 'H':
            path.lineTo(number(), path.currentPosition().y());
            break;
        case 'V':
            path.lineTo(path.currentPosition().x(), number());
            break;
        case 'C': {
            const QPointF first = point();
            const QPointF second = point();
            path.cubicTo(first, second, point());
            break;
        }
        case 'Z':
            path.closeSubpath();
            break;
        default:
            shape(letter);
        }
    }

    void shape(char letter)
    {
        const QPointF at = point();
        const double size = number();
        if (letter == 'O') {
            path.addEllipse(at, size, size);
        } else if (letter == 'A') {
            const QRectF box(at.x() - size, at.y() - size, 2 * size, 2 * size);
            const double start = number();
            path.arcMoveTo(box, start);
            path.arcTo(box, start, number());
        } else if (letter == 'R') {
            const double height = number();
            const double radius = number();
            path.addRoundedRect({at, QSizeF(size, height)}, radius, radius);
        } else {
            fatal("Symbol: an unknown path element");
        }
    }

    QStringList words;
    qsizetype place = 0;
    QPainterPath path{};
};

QPainterPath stroked(const QPainterPath& path)
{
    QPainterPathStroker stroker;
    stroker.setWidth(kStroke * kFineness);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(path).simplified();
}

QPainterPath drawn(std::string_view steps)
{
    QPainterPath outline;
    const QString text = QString::fromLatin1(steps.data(), static_cast<qsizetype>(steps.size()));
    for (const QString& step : text.split('|')) {
        const QPainterPath path
            = QTransform::fromScale(kFineness, kFineness).map(PathReader(step.mid(1)).read());
        switch (step.at(0).toLatin1()) {
        case 's':
            outline = outline.united(stroked(path));
            break;
        case 'f':
            outline = outline.united(path);
            break;
        case 'c':
            outline = outline.subtracted(stroked(path));
            break;
        case 'x':
            outline = outline.subtracted(path);
            break;
        default:
            fatal("Symbol: an unknown step");
        }
    }
    return QTransform::fromScale(1 / kFineness, 1 / kFineness).map(outline);
}

} // namespace

const QPainterPath& outline(const QString& name)
{
    static QHash<QString, QPainterPath> outlines; // made on first use, each once
    if (const auto found = outlines.constFind(name); found != outlines.constEnd()) {
        return *found;
    }
    const auto table = symbolTable();
    const std::string wanted = name.toStdString();
    const auto drawing = std::find_if(
        table.begin(), table.end(), [&](const auto& row) { return row.name == wanted; });
    // A broken frame for a name without a drawing: a picture that lacks is no reason to stop.
    return *outlines.insert(name, drawn(drawing == table.end() ? kNothing : drawing->steps));
}

QStringList names()
{
    QStringList names;
    for (const SymbolDrawing& drawing : symbolTable()) {
        names.append(
            QString::fromLatin1(drawing.name.data(), static_cast<qsizetype>(drawing.name.size())));
    }
    return names;
}

void draw(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color)
{
    const double side = std::min(rect.width(), rect.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center() - QPointF(side / 2, side / 2));
    painter.scale(side / kGrid, side / kGrid);
    painter.fillPath(outline(name), color);
    painter.restore();
}

QIcon icon(const QString& name, int pixels, const QColor& color)
{
    QIcon icon;
    for (const int scale : {1, 2, 3}) {
        QPixmap pixmap(pixels * scale, pixels * scale);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        draw(painter, name, QRectF(0, 0, pixels, pixels), color);
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace quillbrook::Symbol
