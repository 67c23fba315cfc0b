#include "pages/views/CategoryPickerSheet.h"

#include "categories/SeedTables.h"
#include "pages/figures/AppCategoryMarks.h"
#include "pages/kit/Line.h"
#include "pages/kit/MarkList.h"
#include "pages/kit/MarkView.h"
#include "pages/kit/PlainButton.h"
#include "pages/kit/SheetHead.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillbrook {

namespace {

constexpr QSize kSize(360, 400);
constexpr int kRestorePixels = 14;

/// The row of the category that the application is in; the first when it can't be chosen.
int rowOf(const AppEntry& app)
{
    const auto& choices = selectableCategories();
    const auto id = categoryIdByKey().find(app.categoryKey);
    if (id == categoryIdByKey().end()) {
        return 0;
    }
    const auto found = std::ranges::find(choices, id->second, &SelectableCategory::id);
    return found == choices.end() ? 0 : static_cast<int>(found - choices.begin());
}

} // namespace

CategoryPickerSheet::CategoryPickerSheet(const AppEntry& app, OnSelect onSelect, QWidget* owner)
    : Sheet(toQString(pickerTitle(app)), kSize, owner)
    , app(app)
    , onSelect(std::move(onSelect))
    , rows(makeRows())
{
    auto* head = new SheetHead(windowTitle(), "取消");
    connect(head, &SheetHead::pressed, this, &QDialog::reject);
    auto* present = new MarkView("当前分类");
    present->setPictureHeight(kCurrentCategoryHeight);
    present->setPicture(
        [app](Size size, const TextWidth&) { return currentCategoryMarks(app, size); });

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head);
    column->addWidget(present);
    column->addWidget(rows, 1);
    if (app.hasUserOverride) {
        auto* restore = new PlainButton(
            "arrow.uturn.backward", "恢复系统默认", kRestorePixels, {SystemColor::orange});
        connect(restore, &PlainButton::clicked, this, [this] { select(std::nullopt); });
        column->addWidget(new Line);
        column->addWidget(restore);
    }
    rows->setFocus();
}

void CategoryPickerSheet::showEvent(QShowEvent* event)
{
    Sheet::showEvent(event);
    rows->setCurrentRow(rowOf(app));
}

MarkList* CategoryPickerSheet::makeRows()
{
    auto* list = new MarkList("分类", {.rowHeight = kCategoryRowHeight});
    list->setRows(static_cast<int>(selectableCategories().size()),
        [this](int row, Size size, const TextWidth&) {
            return categoryRowMarks(
                selectableCategories()[static_cast<std::size_t>(row)], app, size);
        });
    connect(list, &MarkList::pressed, this,
        [this](int row) { select(selectableCategories()[static_cast<std::size_t>(row)].id); });
    return list;
}

void CategoryPickerSheet::select(std::optional<std::int64_t> categoryId)
{
    onSelect(categoryId);
    accept();
}

} // namespace quillbrook
