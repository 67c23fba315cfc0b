#include "pages/kit/PageHead.h"

#include "pages/kit/TextDrawing.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kAboveCaption = 2;

} // namespace

PageHead::PageHead(QWidget* title, int spacing, QWidget* parent)
    : QWidget(parent)
    , row(new QHBoxLayout(this))
{
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    row->addWidget(title);
    row->addStretch();
}

void PageHead::add(QWidget* widget)
{
    row->addWidget(widget);
}

QWidget* plainTitle(const QString& title, TextStyle style, const QString& caption)
{
    QLabel* line = textLabel(title, Look::font(style, QFont::Bold));
    if (caption.isEmpty()) {
        return line;
    }
    auto* both = new QWidget;
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kAboveCaption);
    column->addWidget(line);
    column->addWidget(secondaryLabel(caption, Look::font(TextStyle::caption)));
    return both;
}

} // namespace quillbrook
