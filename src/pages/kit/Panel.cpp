#include "pages/kit/Panel.h"

#include "pages/kit/Look.h"
#include "pages/kit/RoundedFill.h"

#include <QPainter>

namespace quillbrook {

PanelForm withoutPanel()
{
    return {.padding = 0, .radius = 0, .ground = std::nullopt};
}

Panel::Panel(QWidget* parent) : Panel(PanelForm{}, parent) {}

Panel::Panel(const PanelForm& form, QWidget* parent) : QWidget(parent), form(form)
{
    setContentsMargins(form.padding, form.padding, form.padding, form.padding);
}

void Panel::paintEvent(QPaintEvent*)
{
    if (!form.ground) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    fillRounded(painter, rect(), form.radius, Look::color(*form.ground, palette()));
}

} // namespace quillbrook
