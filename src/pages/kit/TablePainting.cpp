#include "pages/kit/TablePainting.h"

#include "pages/kit/FocusRing.h"
#include "pages/kit/Look.h"
#include "pages/kit/TableModel.h"
#include "pages/kit/TextDrawing.h"

#include <QAbstractItemView>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillbrook {

namespace {

constexpr double kHeaderOpacity = 0.5;
constexpr int kBehindDot = 6;
constexpr double kRingRadius = 4;

Qt::AlignmentFlag alignmentOf(const TableColumn& column)
{
    switch (column.alignment) {
    case TextAlignment::leading:
        return Qt::AlignLeft;
    case TextAlignment::center:
        return Qt::AlignHCenter;
    case TextAlignment::trailing:
        return Qt::AlignRight;
    }
    return Qt::AlignLeft;
}

double textWidth(const TableCell& cell)
{
    return QFontMetricsF(Look::font(cell.face))
        .horizontalAdvance(QString::fromStdString(cell.text));
}

double dotWidth(const TableCell& cell)
{
    return cell.dot ? cell.dot->diameter + kBehindDot : 0;
}

/// Where a dot with its text begins, which are aligned as one.
double leftOf(const QRectF& place, Qt::AlignmentFlag alignment, double contentWidth)
{
    const double rest = std::max(0.0, place.width() - contentWidth);
    return place.left()
        + (alignment == Qt::AlignLeft         ? 0
                : alignment == Qt::AlignRight ? rest
                                              : rest / 2);
}

int leftPadding(int column)
{
    return column == 0 ? TableSizes::kSidePadding : TableSizes::kGap / 2;
}

int rightPadding(const TableModel& model, int column)
{
    return column == model.columnCount() - 1 ? TableSizes::kSidePadding : TableSizes::kGap / 2;
}

} // namespace

int TableSizes::padding(const TableModel& model, int column)
{
    return leftPadding(column) + rightPadding(model, column);
}

QRect TableSizes::textPlace(const QRect& section, const TableModel& model, int column)
{
    return section.adjusted(leftPadding(column), 0, -rightPadding(model, column), 0);
}

TableHeader::TableHeader(const TableModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
    , columns(model)
{
    setSectionsClickable(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(0);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
}

QSize TableHeader::sizeHint() const
{
    return {
        QHeaderView::sizeHint().width(), TableSizes::kHeaderLine + 2 * TableSizes::kHeaderPadding};
}

void TableHeader::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Look::faded(Look::controlBackground(palette()), kHeaderOpacity));
    // Round above, where the table's corners are; the lower corners lie below what is seen.
    painter.drawRoundedRect(viewport()->rect().adjusted(0, 0, 0, TableSizes::kRadius),
        TableSizes::kRadius, TableSizes::kRadius);
    const QFont font = Look::font(TextStyle::caption, QFont::Bold);
    for (int column = 0; column < count(); ++column) {
        const QRect section(
            sectionViewportPosition(column), 0, sectionSize(column), viewport()->height());
        const TableColumn& drawn = columns.column(column);
        drawShrunkText(painter, TableSizes::textPlace(section, columns, column), alignmentOf(drawn),
            QString::fromStdString(drawn.title), font, Look::secondaryText(palette()));
    }
}

TableDelegate::TableDelegate(const TableModel& model, QObject* parent)
    : QStyledItemDelegate(parent)
    , model(model)
{
}

void TableDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const TableCell cell = model.cell(index);
    const Qt::AlignmentFlag alignment = alignmentOf(model.column(index.column()));
    QRectF place = TableSizes::textPlace(option.rect, model, index.column());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (cell.dot) {
        const double size = cell.dot->diameter;
        place.setLeft(leftOf(place, alignment, dotWidth(cell) + textWidth(cell)));
        painter->setPen(Qt::NoPen);
        painter->setBrush(Look::color(cell.dot->tint, option.palette));
        painter->drawEllipse(QRectF(place.left(), place.center().y() - size / 2, size, size));
        place.setLeft(place.left() + dotWidth(cell));
    }
    drawShrunkText(*painter, place, cell.dot ? Qt::AlignLeft : alignment,
        QString::fromStdString(cell.text), Look::font(cell.face),
        Look::color(cell.tint, option.palette));
    painter->restore();
    if (option.state.testFlag(QStyle::State_HasFocus) && option.widget != nullptr) {
        drawFocusRing(*painter, *option.widget, option.rect, kRingRadius);
    }
}

bool TableDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return false;
    }
    const TableCell cell = model.cell(index);
    const QRect place = TableSizes::textPlace(option.rect, model, index.column());
    const bool isCut = dotWidth(cell) + textWidth(cell) > place.width() + 1;
    QToolTip::showText(event->globalPos(),
        isCut ? plainToolTip(QString::fromStdString(cell.text)) : QString(), view);
    return true;
}

} // namespace quillbrook
