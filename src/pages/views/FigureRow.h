#pragma once

#include "pages/marks/FigureContent.h"
#include "pages/kit/FigureCard.h"

#include <QList>
#include <QWidget>

#include <span>

namespace quillbrook {

/// Figure cards side by side, all of one width.
class FigureRow final : public QWidget {
    Q_OBJECT

public:
    FigureRow(int count, FigureCard::Shrinking shrinking, QWidget* parent = nullptr);

    /// One figure for each card.
    void setFigures(std::span<const FigureContent> figures);

private:
    QList<FigureCard*> cards{};
};

} // namespace quillbrook
