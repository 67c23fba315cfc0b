#include "pages/kit/EmptyState.h"

#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/TintedLabel.h"

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kSpacing = 12;

} // namespace

EmptyState::EmptyState(
    const QString& symbol, const QString& line, const QString& hint, QWidget* parent)
    : EmptyState(symbol, line, hint, EmptyForm{}, parent)
{
}

EmptyState::EmptyState(const QString& symbol, const QString& line, const QString& hint,
    const EmptyForm& form, QWidget* parent)
    : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kSpacing);
    column->addStretch();
    column->addWidget(
        new SymbolLabel(symbol, form.symbolPixels, form.symbolTint), 0, Qt::AlignHCenter);
    column->addWidget(
        new TintedLabel(line, Look::font(form.lineStyle), form.lineTint), 0, Qt::AlignHCenter);
    if (!hint.isEmpty()) {
        column->addWidget(
            secondaryLabel(hint, Look::font(TextStyle::caption)), 0, Qt::AlignHCenter);
    }
    column->addStretch();
}

} // namespace quillbrook
