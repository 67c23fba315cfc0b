#include "pages/kit/EmptyState.h"

#include "pages/kit/Look.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kSymbolPixels = 40;
constexpr int kSpacing = 12;

} // namespace

EmptyState::EmptyState(
    const QString& symbol, const QString& line, const QString& hint, QWidget* parent)
    : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kSpacing);
    column->addStretch();
    column->addWidget(
        new SymbolLabel(symbol, kSymbolPixels, &Look::secondaryText), 0, Qt::AlignHCenter);
    column->addWidget(textLabel(line, Look::font(TextStyle::title3)), 0, Qt::AlignHCenter);
    if (!hint.isEmpty()) {
        column->addWidget(
            secondaryLabel(hint, Look::font(TextStyle::caption)), 0, Qt::AlignHCenter);
    }
    column->addStretch();
}

} // namespace quillbrook
