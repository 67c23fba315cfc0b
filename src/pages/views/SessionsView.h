#pragma once

#include "pages/figures/SessionsFigures.h"
#include "pages/views/Page.h"

#include <string>
#include <vector>

class QHBoxLayout;
class QLabel;

namespace quillbrook {

class MenuPicker;
class RecordTable;

/// The Sessions page, for the search for faults: the newest sessions in the foreground as they were
/// recorded. What is filtered stays as long as the page.
class SessionsView final : public Page {
    Q_OBJECT

public:
    explicit SessionsView(const PageTools& tools, QWidget* parent = nullptr);

    using Page::show;
    void show(const DashboardData& data) override;

private:
    QLayout* makeFilters();
    void showApps();
    void showRows();

    const Platform& platform;
    std::vector<SessionDetail> sessions{};
    std::vector<std::string> apps{}; // that the picker offers
    SessionsFilter filter{};
    QLabel* count; // of all sessions
    QLabel* shownCount; // of those that pass
    MenuPicker* appPicker;
    RecordTable* table;
};

} // namespace quillbrook
