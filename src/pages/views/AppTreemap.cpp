#include "pages/views/AppTreemap.h"

#include "categories/SeedTables.h"
#include "pages/kit/FocusRing.h"
#include "pages/kit/HoverTip.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/Convert.h"

#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kHeight = 440;
constexpr int kMinimumWidth = 200;
constexpr double kRadius = 10;
constexpr double kFillOpacity = 0.65;
constexpr double kBorderWidth = 1.5;
constexpr double kBorderOpacity = 0.5;
constexpr int kNamePixels = 10;
constexpr int kTimePixels = 8;
constexpr double kTimeOpacity = 0.85;
constexpr double kLineGap = 2;
constexpr double kWidthMargin = 8; // of a text in its cell, both sides together
constexpr double kHeightMargin = 4;
constexpr int kCheckPixels = 12;
constexpr int kLongestMenuName = 300;

/// `text` for a menu, where a single ampersand would mark a mnemonic and go.
QString menuText(const QString& text)
{
    return QString(text).replace('&', "&&");
}

/// How high a line of text is within a cell.
double lineHeight(const QFont& font, const Rect& cell)
{
    return std::min(QFontMetricsF(font).height(), cell.height - kHeightMargin);
}

} // namespace

AppTreemap::AppTreemap(CategoryChange onCategoryChange, QWidget* parent)
    : DrawnView(parent)
    , onCategoryChange(std::move(onCategoryChange))
    , tip(new HoverTip(this))
{
    setAccessibleName("应用的活跃时长");
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumWidth(kMinimumWidth);
}

void AppTreemap::setApps(std::vector<AppUsage> newApps)
{
    apps = std::move(newApps);
    updateTip();
    update();
}

QSize AppTreemap::sizeHint() const
{
    return {kMinimumWidth, kHeight};
}

std::vector<Cell> AppTreemap::cells() const
{
    return computeCells(apps, {static_cast<double>(width()), static_cast<double>(height())});
}

std::optional<Cell> AppTreemap::hoveredCell() const
{
    if (!hoveredAppName) {
        return std::nullopt;
    }
    const std::vector<Cell> present = cells();
    const auto index = cellNamed(present, *hoveredAppName);
    return index ? std::optional(present[*index]) : std::nullopt;
}

void AppTreemap::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(frame, kRadius, kRadius);
    painter.save();
    painter.setClipPath(outline);
    for (const Cell& cell : cells()) {
        drawCell(painter, cell);
    }
    painter.restore();
    painter.strokePath(outline, QPen(Look::faded(Look::secondaryText(palette()), 0.2), 1));
    drawFocusRing(painter, *this, rect(), kRadius);
}

void AppTreemap::drawCell(QPainter& painter, const Cell& cell) const
{
    const QRectF rect = toQRectF(cell.rect);
    painter.fillRect(rect, Look::faded(Look::color(cell.color, palette()), kFillOpacity));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(
        QPen(Look::faded(Look::windowBackground(palette()), kBorderOpacity), kBorderWidth));
    painter.drawRect(rect);
    if (!hasRoomForName(cell.rect)) {
        return;
    }
    const QString name = toQString(cell.app.appName);
    const QFont nameFont = Look::systemFont(kNamePixels, QFont::DemiBold);
    QRectF line = rect.adjusted(kWidthMargin / 2, 0, -kWidthMargin / 2, 0);
    if (!hasRoomForTime(cell.rect)) {
        drawTextOnColor(painter, line, Qt::AlignHCenter, name, nameFont);
        return;
    }
    const QFont timeFont = Look::systemFont(kTimePixels);
    const double nameHeight = lineHeight(nameFont, cell.rect);
    const double timeHeight = lineHeight(timeFont, cell.rect);
    line.setTop(rect.center().y() - (nameHeight + timeHeight + kLineGap) * 0.5);
    line.setHeight(nameHeight);
    drawTextOnColor(painter, line, Qt::AlignHCenter, name, nameFont);
    line.setTop(line.bottom() + kLineGap);
    line.setHeight(timeHeight);
    drawTextOnColor(painter, line, Qt::AlignHCenter, toQString(fmtMin(cell.app.totalSeconds)),
        timeFont, kTimeOpacity);
}

std::vector<DrawnItem> AppTreemap::drawnItems() const
{
    std::vector<DrawnItem> items;
    for (const Cell& cell : cells()) {
        items.push_back({DrawnRole::cell, toQString(cell.app.appName),
            toQString(fmtMin(cell.app.totalSeconds)), toQRectF(cell.rect)});
    }
    return items;
}

void AppTreemap::enterEvent(QEnterEvent* event)
{
    hoverAt(event->position());
}

void AppTreemap::mouseMoveEvent(QMouseEvent* event)
{
    hoverAt(event->position());
}

void AppTreemap::hoverAt(QPointF point)
{
    const std::vector<Cell> present = cells();
    const auto index = cellAt(present, {point.x(), point.y()});
    hover(index ? std::optional(present[*index].app.appName) : std::nullopt);
}

void AppTreemap::leaveEvent(QEvent*)
{
    hover(std::nullopt);
}

void AppTreemap::focusOutEvent(QFocusEvent* event)
{
    // The menu takes the focus while it is open, and speaks of the hovered cell.
    if (event->reason() != Qt::PopupFocusReason) {
        hover(std::nullopt);
    }
    DrawnView::focusOutEvent(event);
}

void AppTreemap::resizeEvent(QResizeEvent*)
{
    updateTip();
}

void AppTreemap::keyPressEvent(QKeyEvent* event)
{
    const bool isForward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
    const bool isBackward = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up;
    const std::vector<Cell> present = cells();
    if ((!isForward && !isBackward) || present.empty()) {
        DrawnView::keyPressEvent(event);
        return;
    }
    std::size_t next = isForward ? 0 : present.size() - 1;
    if (hoveredAppName) {
        if (const auto index = cellNamed(present, *hoveredAppName)) {
            const std::size_t step = isForward ? 1 : present.size() - 1;
            next = (*index + step) % present.size();
        }
    }
    hover(present[next].app.appName);
}

void AppTreemap::hover(std::optional<std::string> appName)
{
    if (hoveredAppName != appName) {
        hoveredAppName = std::move(appName);
        updateTip();
    }
}

void AppTreemap::updateTip()
{
    const std::optional<Cell> cell = hoveredCell();
    if (!cell) {
        tip->hide();
        return;
    }
    tip->setContent(Look::toQColor(categoryColor(cell->app.categoryLabel)),
        toQString(cell->app.appName), toQString(cell->app.categoryLabel));
    tip->showAt(toQPointF(tooltipCenter(cell->rect, width())));
}

void AppTreemap::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Mouse) {
        hoverAt(event->pos()); // the mouse may not have moved since the data came
    }
    std::unique_ptr<QMenu> menu = contextMenu();
    if (!menu) {
        return;
    }
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        place = mapToGlobal(toQRectF(hoveredCell()->rect).center().toPoint());
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu.release()->popup(place);
}

std::unique_ptr<QMenu> AppTreemap::contextMenu()
{
    const std::optional<Cell> cell = hoveredCell();
    if (!cell) {
        return nullptr;
    }
    const AppUsage& app = cell->app;
    auto menu = std::make_unique<QMenu>(this);
    const QFont headline = Look::font(TextStyle::headline);
    const QString name = QFontMetricsF(headline).elidedText(
        toQString(app.appName), Qt::ElideMiddle, kLongestMenuName);
    menu->addAction(menuText(name))->setFont(headline);
    menu->addAction("分类: " + menuText(toQString(app.categoryLabel)))->setEnabled(false);
    menu->addAction("活跃时长: " + toQString(fmtMin(app.totalSeconds)))->setEnabled(false);
    menu->addSeparator();
    if (onCategoryChange) {
        addCategories(*menu, app);
    }
    return menu;
}

void AppTreemap::addCategories(QMenu& menu, const AppUsage& app)
{
    QMenu* categories = menu.addMenu("切换分类");
    const QIcon check = Symbol::icon("checkmark", kCheckPixels, Look::primaryText(palette()));
    for (const SelectableCategory& category : selectableCategories()) {
        const std::string label(category.label);
        const std::int64_t id = category.id;
        QAction* action = categories->addAction(toQString(label));
        if (label == app.categoryLabel) {
            action->setIcon(check);
        }
        connect(action, &QAction::triggered, this, [this, app, label, id] {
            std::printf("[AppTreemap] 切换分类: %s -> %s (id=%lld)\n", app.appName.c_str(),
                label.c_str(), static_cast<long long>(id));
            std::fflush(stdout);
            onCategoryChange(app.bundleId, id);
        });
    }
    categories->addSeparator();
    connect(categories->addAction("恢复系统默认"), &QAction::triggered, this,
        [this, app] { onCategoryChange(app.bundleId, std::nullopt); });
}

} // namespace quillbrook
