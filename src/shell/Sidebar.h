#pragma once

#include "report/Periods.h"

#include <QList>
#include <QWidget>

class QAbstractButton;
class QVBoxLayout;

namespace quillbrook {

/// The left column of the dashboard: the pages in their sections, a verse, and the way to the
/// about page. The arrow keys walk through the pages.
class Sidebar final : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMinimumWidth = 180;
    static constexpr int kIdealWidth = 220;

    explicit Sidebar(QWidget* parent = nullptr);

    /// Marks the selected page, without a signal.
    void setSelected(NavTab tab);

signals:
    void selected(NavTab tab);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Row {
        NavTab tab;
        QAbstractButton* button;
    };

    void addRow(QVBoxLayout& column, NavTab tab, QAbstractButton* button);

    QList<Row> rows{};
};

} // namespace quillbrook
