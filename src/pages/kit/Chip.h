#pragma once

#include "pages/kit/Look.h"
#include "pages/kit/Spoken.h"

#include <QAbstractButton>
#include <QVariantAnimation>

#include <cstdint>

namespace quillbrook {

/// A small rounded field of a legend: a dot in a colour and a name on one line. A long name is
/// elided in the middle and stands whole in the tooltip. The highlight comes and goes with a short
/// ease.
class Chip final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    enum class Kind : std::uint8_t {
        label, ///< tells a colour, and can't be pressed
        button, ///< can be pressed; checked is highlighted
        plain, ///< a label without a ground, for the legend of a chart
    };

    Chip(Kind kind, const QString& name, PaletteColor dotColor, QWidget* parent = nullptr);
    Chip(Kind kind, const QString& name, const Tint& dot, QWidget* parent = nullptr);

    void setDot(const Tint& tint);
    /// The tooltip. Where it is empty, that of a name that is cut is the whole name.
    void setHelp(const QString& help);

    QAccessible::Role accessibleRole() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void followChecked(bool isChecked);

    Kind kind;
    PaletteColor dotColor;
    QVariantAnimation highlight{}; // 0 to 1
};

} // namespace quillbrook
