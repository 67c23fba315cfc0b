#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

#include <cstdint>
#include <functional>

namespace quillbrook {

/// A small rounded field of a legend: a dot in a colour and a name on one line. A long name is
/// elided in the middle and stands whole in the tooltip.
class Chip final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    enum class Kind : std::uint8_t {
        label, ///< tells a colour, and can't be pressed
        button, ///< can be pressed; checked is highlighted
    };

    /// The dot's colour may change with the palette, so it is asked for at each drawing.
    using DotColor = std::function<QColor(const QPalette&)>;

    Chip(Kind kind, const QString& name, DotColor dotColor, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind kind;
    DotColor dotColor;
};

} // namespace quillbrook
