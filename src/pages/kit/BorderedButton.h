#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

#include <cstdint>

namespace quillbrook {

enum class ButtonForm : std::uint8_t {
    small, ///< stands beside other things
    large, ///< stands by itself
    prominent, ///< large, with a breath of the accent colour: what leads on
};

/// A button with a border that shows a symbol, a text, or both; a small one at first.
class BorderedButton final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    /// Without a `text`, `name` is what screen readers and the tooltip say. Without a `symbol`,
    /// which is empty then, the text stands alone.
    BorderedButton(
        const QString& symbol, const QString& text, const QString& name, QWidget* parent = nullptr);

    void setForm(ButtonForm newForm);

    const QString& symbolName() const { return symbol; }

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    ButtonForm form = ButtonForm::small;
};

} // namespace quillbrook
