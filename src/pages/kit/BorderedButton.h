#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

/// A small button with a border that shows a symbol, a text, or both.
class BorderedButton final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    /// Without a `text`, `name` is what screen readers and the tooltip say. Without a `symbol`,
    /// which is empty then, the text stands alone.
    BorderedButton(
        const QString& symbol, const QString& text, const QString& name, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
};

} // namespace quillbrook
