#pragma once

#include <QProxyStyle>

namespace quillbrook {

/// Qt's own style with our form of what Qt makes by itself: menus and tooltips have round corners,
/// long menus scroll, the check mark is our symbol, and a menu bar ends in a line of ours.
class FormStyle final : public QProxyStyle {
    Q_OBJECT

public:
    static constexpr int kMenuRadius = 8;
    static constexpr int kToolTipRadius = 6;

    FormStyle();

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* returned) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
};

} // namespace quillbrook
