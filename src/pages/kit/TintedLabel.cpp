#include "pages/kit/TintedLabel.h"

#include "pages/kit/Look.h"

#include <QApplication>
#include <QEvent>

namespace quillbrook {

TintedLabel::TintedLabel(const QString& text, const QFont& font, const Tint& tint, QWidget* parent)
    : QLabel(text, parent)
    , tint(tint)
{
    setFont(font);
    setTextFormat(Qt::PlainText);
    applyTint();
}

void TintedLabel::setTint(const Tint& newTint)
{
    tint = newTint;
    applyTint();
}

void TintedLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        applyTint();
    }
}

void TintedLabel::applyTint()
{
    const QColor color = Look::color(tint, QApplication::palette());
    if (palette().color(QPalette::WindowText) != color) { // setting it changes the palette again
        QPalette tinted;
        tinted.setColor(QPalette::WindowText, color);
        setPalette(tinted);
    }
}

} // namespace quillbrook
