#include "pages/views/AppTreemap.h"

#include "categories/SeedTables.h"
#include "pages/figures/AppTreemapMarks.h"
#include "pages/kit/Convert.h"
#include "pages/kit/HoverTip.h"
#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"

#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QMenu>

#include <cstdio>
#include <utility>

namespace quillbrook {

namespace {

constexpr int kHeight = 440;
constexpr int kMinimumWidth = 200;
constexpr int kCheckPixels = 12;
constexpr int kLongestMenuName = 300;

/// `text` for a menu, where a single ampersand would mark a mnemonic and go.
QString menuText(const QString& text)
{
    return QString(text).replace('&', "&&");
}

} // namespace

AppTreemap::AppTreemap(CategoryChange onCategoryChange, QWidget* parent)
    : MarkView("应用的活跃时长", parent)
    , onCategoryChange(std::move(onCategoryChange))
    , tip(new HoverTip(this))
{
    setCornerRadius(kTreemapRadius);
    setPictureHeight(kHeight, kMinimumWidth);
    connect(this, &MarkView::currentMarkChanged, this, &AppTreemap::updateTip);
}

void AppTreemap::setApps(std::vector<AppUsage> newApps)
{
    apps = std::move(newApps);
    setPicture([shown = apps](Size size, const TextWidth& width) {
        return appTreemapMarks(shown, size, width);
    });
}

std::optional<Cell> AppTreemap::hoveredCell() const
{
    if (!currentMark()) {
        return std::nullopt;
    }
    const std::vector<Cell> cells
        = computeCells(apps, {static_cast<double>(width()), static_cast<double>(height())});
    // Of several applications of one name the first speaks for all.
    const auto index = cellNamed(cells, marks()[*currentMark()].name);
    return index ? std::optional(cells[*index]) : std::nullopt;
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
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    if (isByMouse) {
        hoverAt(event->pos()); // the mouse may not have moved since the data came
    }
    std::unique_ptr<QMenu> menu = contextMenu();
    if (!menu) {
        return;
    }
    const QPoint place = isByMouse ? event->globalPos()
                                   : mapToGlobal(toQRectF(hoveredCell()->rect).center().toPoint());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (isByMouse) {
        // Closed by a click elsewhere, the menu leaves the pointer over another cell or none.
        connect(menu.get(), &QMenu::aboutToHide, this, &MarkView::hoverAgain, Qt::QueuedConnection);
    }
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
