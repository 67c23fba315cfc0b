#include "pages/kit/Section.h"

#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/WrappedLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

template <typename Layout>
Layout* plainLayout(int spacing)
{
    auto* layout = new Layout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

QWidget* hiddenPlace(QLayout* layout)
{
    auto* place = new QWidget;
    place->setLayout(layout);
    place->hide();
    return place;
}

} // namespace

Section::Section(const QString& headline, const SectionForm& form, QWidget* parent)
    : Panel(form.panel, parent)
    , head(plainLayout<QHBoxLayout>(form.spacing))
    , notes(plainLayout<QVBoxLayout>(form.spacing))
    , nothing(secondaryLabel(form.emptyText, Look::font(TextStyle::caption)))
    , inside(new QWidget)
    , column(plainLayout<QVBoxLayout>(form.spacing))
{
    nothing->setMinimumHeight(form.emptyHeight);
    nothing->setAlignment(Qt::AlignCenter);
    inside->setLayout(column);

    auto* whole = plainLayout<QVBoxLayout>(form.spacing);
    setLayout(whole);
    // In widgets of their own, as the order of children is the order of reading. They take no place
    // until something stands in them.
    whole->addWidget(hiddenPlace(head));
    whole->addWidget(hiddenPlace(notes));
    whole->addWidget(nothing, 1);
    whole->addWidget(inside, 1);
    head->addStretch();
    if (!headline.isEmpty()) {
        head->insertWidget(0, textLabel(headline, Look::font(TextStyle::headline)));
        head->parentWidget()->show();
    }
    setEmpty(true);
}

void Section::addToHead(QWidget* widget)
{
    head->addWidget(widget);
    head->parentWidget()->show();
}

void Section::addNote(const QString& text)
{
    notes->addWidget(new WrappedLabel(text, Look::font(TextStyle::caption)));
    notes->parentWidget()->show();
}

void Section::setEmpty(bool isEmpty)
{
    nothing->setVisible(isEmpty);
    inside->setVisible(!isEmpty);
}

} // namespace quillbrook
