#include "pages/kit/Motto.h"

#include "pages/kit/Look.h"

namespace quillbrook {

namespace {

constexpr int kPixels = 16;
constexpr int kPadding = 20;

} // namespace

Motto::Motto(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setFont(Look::serifFont(kPixels, QFont::Medium));
    setForegroundRole(QPalette::PlaceholderText);
    setAlignment(Qt::AlignCenter);
    setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    setWordWrap(true);
}

} // namespace quillbrook
