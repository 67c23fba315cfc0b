#pragma once

#include "pages/kit/SpokenChanges.h"
#include "pages/marks/Mark.h"

#include <QAbstractScrollArea>

#include <functional>
#include <optional>
#include <vector>

namespace quillbrook {

/// Rows of one height under each other, each a picture that is made when the row is seen or read,
/// so that thousands cost no more than those on screen. A click presses a row; the arrow keys walk
/// through them, and Return or Space presses the current one.
class MarkList final : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// Makes the marks of one row, from its upper left corner. Screen readers find the first that
    /// has a role, and its shape is what is marked as hovered and as current.
    using RowPicture = std::function<std::vector<Mark>(int row, Size, const TextWidth&)>;

    struct Form {
        int rowHeight = 0; // device-independent pixels, as below
        int sideMargin = 0; // left free at both sides of the rows
    };

    /// `name` is what screen readers call the list.
    MarkList(const QString& name, Form form, QWidget* parent = nullptr);

    /// Replaces all rows. What is in sight, and which row is current, stays as far as there are
    /// rows.
    void setRows(int newCount, RowPicture newPicture);

    /// Shows the first row; none is current then.
    void goToTop();

    /// Makes a row current and shows it.
    void setCurrentRow(int row);
    std::optional<int> currentRow() const { return current; }

    /// Does what a click on the row does.
    void press(int row);

    int rowCount() const { return count; }

    /// What stands for a row. Asks for its picture.
    Mark spokenMark(int row) const;

    /// A row's place in the viewport, or outside of it.
    QRect rowPlace(int row) const;
    std::optional<int> rowAt(QPoint point) const;

signals:
    void pressed(int row);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    std::vector<Mark> marksOf(int row) const;
    std::vector<SpokenText> spokenTexts() const;
    void paintRow(QPainter& painter, int row) const;
    void fitScrollBar();
    std::optional<int> rowAfter(int key) const;
    void hoverAt(std::optional<QPoint> point);
    void showHelp(QPoint point, QPoint globalPoint);
    void tellCurrent();

    Form form;
    int count = 0;
    RowPicture picture{};
    std::vector<SpokenText> told{}; // to those who read; empty while nobody does
    TextWidth textWidth;
    std::optional<int> current{};
    std::optional<int> hovered{};
    std::optional<int> held{}; // the mouse button went down on it
};

} // namespace quillbrook
