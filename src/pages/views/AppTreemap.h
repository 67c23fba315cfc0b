#pragma once

#include "pages/figures/TreemapLayout.h"
#include "pages/kit/DrawnView.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QMenu;

namespace quillbrook {

class HoverTip;

/// How the active time splits over applications: a rectangle for each, with a tooltip and a menu
/// that moves an application to another category. The arrow keys walk through the cells, the menu
/// key opens the menu.
class AppTreemap final : public DrawnView {
    Q_OBJECT

public:
    /// Moves a bundle identifier to a category; no category means back to the system's rule.
    using CategoryChange
        = std::function<void(const std::string& bundleId, std::optional<std::int64_t> categoryId)>;

    /// Without `onCategoryChange` the menu offers no change.
    explicit AppTreemap(CategoryChange onCategoryChange, QWidget* parent = nullptr);

    void setApps(std::vector<AppUsage> apps);

    /// The menu for the hovered cell; null when no cell is hovered.
    std::unique_ptr<QMenu> contextMenu();

    std::vector<DrawnItem> drawnItems() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    std::vector<Cell> cells() const;
    std::optional<Cell> hoveredCell() const;
    void hoverAt(QPointF point);
    void hover(std::optional<std::string> appName);
    void updateTip();
    void drawCell(QPainter& painter, const Cell& cell) const;
    void addCategories(QMenu& menu, const AppUsage& app);

    std::vector<AppUsage> apps{};
    CategoryChange onCategoryChange;
    std::optional<std::string> hoveredAppName{};
    HoverTip* tip;
};

} // namespace quillbrook
