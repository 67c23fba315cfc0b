#include "pages/views/FigureRow.h"

#include "platform/qt/QtText.h"

#include <QHBoxLayout>

namespace quillbrook {

namespace {

constexpr int kSpacing = 12;

} // namespace

FigureRow::FigureRow(int count, FigureCard::Shrinking shrinking, QWidget* parent) : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSpacing);
    for (int i = 0; i < count; ++i) {
        cards.append(new FigureCard(shrinking));
        row->addWidget(cards.last(), 1);
    }
}

void FigureRow::setFigures(std::span<const FigureContent> figures)
{
    for (qsizetype i = 0; i < cards.size(); ++i) {
        const FigureContent& figure = figures[static_cast<std::size_t>(i)];
        cards[i]->setFigure(toQString(figure.symbol), figure.color, toQString(figure.value),
            toQString(figure.title));
    }
}

} // namespace quillbrook
