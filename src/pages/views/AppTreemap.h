#pragma once

#include "pages/figures/TreemapLayout.h"
#include "pages/kit/MarkView.h"

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
/// that moves an application to another category. The menu key opens the menu of the cell that the
/// arrow keys reached.
class AppTreemap final : public MarkView {
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

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    std::optional<Cell> hoveredCell() const;
    void updateTip();
    void addCategories(QMenu& menu, const AppUsage& app);

    std::vector<AppUsage> apps{};
    CategoryChange onCategoryChange;
    HoverTip* tip;
};

} // namespace quillbrook
