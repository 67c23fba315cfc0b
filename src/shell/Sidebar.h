#pragma once

#include "pages/kit/Spoken.h"
#include "report/Periods.h"

#include <QList>
#include <QWidget>

#include <optional>

class QAbstractButton;
class QScrollArea;
class QVBoxLayout;

namespace quillbrook {

/// The left column of the dashboard: the pages in their sections, a verse where there is room, and
/// the way to the about page. One stop of the Tab key; the arrow keys walk through the pages.
class Sidebar final : public QWidget, public Spoken {
    Q_OBJECT

public:
    static constexpr int kMinimumWidth = 180;
    static constexpr int kIdealWidth = 220;

    explicit Sidebar(QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::List; }

    /// Marks the selected page, without a signal.
    void setSelected(NavTab tab);

signals:
    void selected(NavTab tab);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Row {
        NavTab tab;
        QAbstractButton* button;
    };

    void addRow(QVBoxLayout& column, NavTab tab, QAbstractButton* button);

    void focusRow(QAbstractButton& button);

    QScrollArea* scroller;
    QWidget* list;
    QWidget* verse;
    QList<Row> rows{};
    std::optional<NavTab> selectedTab{};
};

} // namespace quillbrook
