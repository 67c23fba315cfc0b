#pragma once

#include "pages/kit/FigureCard.h"
#include "pages/marks/FigureContent.h"

#include <QList>
#include <QWidget>

#include <span>

namespace quillbrook {

/// How the cards of a row look.
struct CardRowForm {
    int spacing = 12; // between two cards
    FigureCard::Shrinking shrinking{};
    int valuePixels = FigureCard::kValuePixels;
};

/// Figure cards side by side, all of one width.
class CardRow final : public QWidget {
    Q_OBJECT

public:
    CardRow(int count, CardRowForm form, QWidget* parent = nullptr);

    /// One figure for each card, from left to right.
    void setFigures(std::span<const FigureContent> figures);

private:
    QList<FigureCard*> cards{};
};

} // namespace quillbrook
