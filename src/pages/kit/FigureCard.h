#pragma once

#include "base/SystemColor.h"
#include "pages/kit/Spoken.h"

#include <QWidget>

namespace quillbrook {

/// A figure on a ground of its colour: symbol, value, title, centred above each other, the whole in
/// the tooltip where it is cut. Screen readers find one text with the title as name and hear of a
/// value that changes.
class FigureCard final : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// How small value and title may become where the card is narrow.
    struct Shrinking {
        double value = 1;
        double title = 1;
    };

    static constexpr int kValuePixels = 20;

    explicit FigureCard(Shrinking shrinking, QWidget* parent = nullptr);
    FigureCard(Shrinking shrinking, int valuePixels, QWidget* parent = nullptr);

    void setFigure(
        const QString& symbol, SystemColor color, const QString& value, const QString& title);

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
    QString accessibleValue() const override { return value; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateToolTip();

    Shrinking shrinking;
    int valuePixels;
    QString symbol{};
    SystemColor color = SystemColor::blue;
    QString value{};
};

} // namespace quillbrook
