#pragma once

#include "pages/figures/AlertsFigures.h"

#include <QWidget>

#include <set>
#include <string>
#include <vector>

class QVBoxLayout;

namespace quillbrook {

class FoldHeader;
class MarkView;

/// The days with alerts, one under the other, each folded or open. An open day's picture is made
/// when it opens.
class AlertDayList final : public QWidget {
    Q_OBJECT

public:
    explicit AlertDayList(QWidget* parent = nullptr);

    /// Replaces the days. Where they are others than before, all but `today` are folded.
    void setDays(std::vector<AlertDay> newDays, const std::string& today);

private:
    /// The widgets of a day.
    struct Section {
        FoldHeader* header = nullptr;
        MarkView* picture = nullptr; // of an open day alone
    };

    void rebuildSections();
    void addSection(const AlertDay& day);
    void toggle(std::size_t place);
    void showDay(std::size_t place);

    std::vector<AlertDay> days{};
    std::set<std::string> collapsedDates{};
    std::vector<Section> sections{}; // one for each day
    QVBoxLayout* column;
};

} // namespace quillbrook
