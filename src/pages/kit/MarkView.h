#pragma once

#include "pages/kit/SpokenChanges.h"
#include "pages/marks/Mark.h"

#include <QWidget>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace quillbrook {

/// A picture made of marks. What is painted, what screen readers find as its children, what the
/// tooltip tells and what the pointer is over all come from the one list, which is kept until the
/// picture, the size or the scale changes.
///
/// The arrow keys, Home and End walk through the marks and cells; Escape leaves them. Main thread
/// only.
class MarkView : public QWidget {
    Q_OBJECT

public:
    /// Makes the marks for a size in points.
    using Picture = std::function<std::vector<Mark>(Size, const TextWidth&)>;

    /// `name` is what screen readers call the picture.
    explicit MarkView(const QString& name, QWidget* parent = nullptr);

    void setPicture(Picture picture);

    /// The height that the picture needs; its width follows from its place, down to `minimumWidth`.
    void setPictureHeight(int height, int minimumWidth = 0);

    /// Cuts all that is painted off at round corners.
    void setCornerRadius(double radius);

    const std::vector<Mark>& marks() const;

    /// The places of the marks that screen readers find.
    const std::vector<std::size_t>& spokenMarks() const;

    /// The mark under the pointer or reached by keys; empty when there is none. After a change of
    /// the picture it is the first one of the same name.
    std::optional<std::size_t> currentMark() const { return current; }

    /// Looks again for the mark under the pointer, which may not have moved.
    void hoverAgain();

    QSize sizeHint() const override { return wanted; }
    QSize minimumSizeHint() const override { return wanted; }

signals:
    /// The current mark is another one or stands elsewhere.
    void currentMarkChanged();

protected:
    void hoverAt(QPointF point);
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void remakeMarks();
    void followNewMarks();
    std::vector<SpokenText> spokenTexts() const;
    void setCurrent(std::optional<std::size_t> mark);
    bool walk(int key);
    std::optional<std::size_t> markAt(QPointF point) const;
    QString helpOf(const Mark& mark) const;
    void tellCurrent();
    void followScrolling();

    Picture picture{};
    QSize wanted{};
    double cornerRadius = 0;
    TextWidth textWidth;
    mutable std::optional<std::vector<Mark>> kept{};
    mutable std::vector<std::size_t> spoken{};
    mutable double keptScale = 0;
    std::optional<std::size_t> current{};
    std::string currentName{};
    bool isReachedByKeys = false;
};

} // namespace quillbrook
