#pragma once

#include "base/Lifetime.h"
#include "categories/AppCategoryList.h"
#include "pages/kit/Sheet.h"

#include <vector>

class QLabel;
class QStackedWidget;

namespace quillbrook {

class LoadingState;
class MarkList;
class SearchField;

/// Every application ever seen with its category; pressing one lets the user choose another.
class AppCategorySheet final : public Sheet {
    Q_OBJECT

public:
    AppCategorySheet(const Platform& platform, QWidget* owner);

    /// Until the applications are there.
    bool isLoading() const { return list.isLoading(); }

protected:
    bool event(QEvent* event) override;

private:
    void loadSoon();
    void search(const QString& text);
    void showApps();
    void pick(const AppEntry& app);

    Platform platform;
    AppCategoryList list;
    std::vector<AppEntry> shown{};
    bool isLoadDue = true;
    SearchField* field;
    QStackedWidget* content;
    LoadingState* loading;
    QLabel* nothing;
    MarkList* rows;
    Lifetime lifetime{};
};

} // namespace quillbrook
