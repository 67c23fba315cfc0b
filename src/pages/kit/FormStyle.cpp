#include "pages/kit/FormStyle.h"

#include "pages/kit/Look.h"
#include "pages/kit/Symbol.h"

#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace quillbrook {

namespace {

bool isToolTip(const QWidget& widget)
{
    return widget.inherits("QTipLabel"); // private to Qt
}

QRegion roundedRegion(const QRect& rect, int radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return {path.toFillPolygon().toPolygon()};
}

} // namespace

FormStyle::FormStyle() : QProxyStyle("fusion") {}

void FormStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QMenu*>(widget) != nullptr || isToolTip(*widget)) {
        widget->setAttribute(Qt::WA_TranslucentBackground, Look::canBlendWindows());
    }
}

int FormStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
    QStyleHintReturn* returned) const
{
    switch (hint) {
    case SH_Menu_Scrollable:
        return 1;
    case SH_Menu_Mask:
    case SH_ToolTip_Mask:
        if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(returned);
            mask != nullptr && option != nullptr && !Look::canBlendWindows()) {
            mask->region
                = roundedRegion(option->rect, hint == SH_Menu_Mask ? kMenuRadius : kToolTipRadius);
            return 1;
        }
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

void FormStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
    const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_MenuBarItem || element == CE_MenuBarEmptyArea) {
        // Qt's own line has a hole after each entry on a screen of more than one pixel a point.
        const QRect& rect = option->rect;
        const QRect line(rect.left(), rect.bottom(), rect.width(), 1);
        painter->fillRect(line, Look::windowBackground(option->palette));
        painter->fillRect(line, Look::separator(option->palette));
    }
}

void FormStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
    QPainter* painter, const QWidget* widget) const
{
    if (element == PE_IndicatorMenuCheckMark) {
        if (option->state.testFlag(State_On)) {
            Symbol::draw(*painter, "checkmark", option->rect, option->palette.text().color());
        }
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

} // namespace quillbrook
