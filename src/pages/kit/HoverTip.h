#pragma once

#include <QPropertyAnimation>
#include <QVariantAnimation>
#include <QWidget>

namespace quillbrook {

/// The tooltip over a treemap: a dot in a colour, a name and a note behind it. It lies within its
/// parent, lets the mouse through, and appears and moves with a short ease.
class HoverTip final : public QWidget {
    Q_OBJECT

public:
    explicit HoverTip(QWidget* parent);

    void setContent(const QColor& dot, const QString& name, const QString& note);

    /// Shows the tip centred at `point` of the parent, or moves it there. A tip that would reach
    /// over the parent's edge stays at the edge.
    void showAt(QPointF point);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPoint placeAt(QPointF center) const;

    QColor dot{};
    QString name{};
    QString note{};
    QPropertyAnimation motion{this, "pos"};
    QVariantAnimation appearance{}; // its opacity
};

} // namespace quillbrook
