#pragma once

#include "categories/AppCategoryList.h"
#include "pages/kit/Sheet.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace quillbrook {

class MarkList;

/// The choice of a category for one application.
class CategoryPickerSheet final : public Sheet {
    Q_OBJECT

public:
    /// Gets the category that was chosen, or none for the rules' own.
    using OnSelect = std::function<void(std::optional<std::int64_t> categoryId)>;

    CategoryPickerSheet(const AppEntry& app, OnSelect onSelect, QWidget* owner);

protected:
    void showEvent(QShowEvent* event) override;

private:
    MarkList* makeRows();
    void select(std::optional<std::int64_t> categoryId);

    AppEntry app;
    OnSelect onSelect;
    MarkList* rows;
};

} // namespace quillbrook
