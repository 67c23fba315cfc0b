#pragma once

#include "pages/kit/Spoken.h"
#include "pages/marks/Tint.h"

#include <QAbstractButton>

namespace quillbrook {

/// A button without a bezel: a symbol and a text in one tint, over the whole width. Without a
/// symbol, which is empty then, the text stands in the middle.
class PlainButton final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    /// `pixels` is the size of the text.
    PlainButton(const QString& symbol, const QString& text, int pixels, const Tint& tint,
        QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    int pixels;
    Tint tint;
};

} // namespace quillbrook
