#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

/// A button without a bezel that shows a symbol in the secondary colour.
class IconButton : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    /// `symbolPixels` is the symbol's size; `name` is what screen readers and the tooltip say.
    IconButton(
        const QString& symbol, int symbolPixels, const QString& name, QWidget* parent = nullptr);

    const QString& symbolName() const { return symbol; }

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    int symbolPixels;
};

} // namespace quillbrook
