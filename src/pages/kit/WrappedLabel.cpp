#include "pages/kit/WrappedLabel.h"

namespace quillbrook {

WrappedLabel::WrappedLabel(const QString& text, const QFont& font, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
    setFont(font);
    setForegroundRole(QPalette::PlaceholderText);
    setWordWrap(true);
}

int WrappedLabel::heightForWidth(int width) const
{
    if (measuredText != text()) {
        measuredText = text();
        heights.clear();
    }
    auto height = heights.find(width);
    if (height == heights.end()) {
        height = heights.insert(width, QLabel::heightForWidth(width));
    }
    return *height;
}

void WrappedLabel::changeEvent(QEvent* event)
{
    heights.clear(); // of another font or style, perhaps
    QLabel::changeEvent(event);
}

} // namespace quillbrook
