#include "pages/kit/CardRow.h"

#include <QHBoxLayout>

namespace quillbrook {

CardRow::CardRow(int count, CardRowForm form, QWidget* parent) : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(form.spacing);
    for (int i = 0; i < count; ++i) {
        cards.append(new FigureCard(form.shrinking, form.valuePixels));
        row->addWidget(cards.last(), 1);
    }
}

void CardRow::setFigures(std::span<const FigureContent> figures)
{
    for (qsizetype i = 0; i < cards.size(); ++i) {
        const FigureContent& figure = figures[static_cast<std::size_t>(i)];
        cards[i]->setFigure(QString::fromStdString(figure.symbol), figure.color,
            QString::fromStdString(figure.value), QString::fromStdString(figure.title));
    }
}

} // namespace quillbrook
