#include "pages/kit/InfoPopover.h"

#include "pages/kit/Line.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/WrappedLabel.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kSymbolPixels = 10; // the symbols stand at caption size
constexpr int kUnderName = 4;
constexpr int kBehindName = 8;

} // namespace

InfoPopover::InfoPopover(const InfoForm& form, QWidget* anchor)
    : Popover(form.width, anchor)
    , form(form)
{
    content()->setSpacing(form.spacing);
}

void InfoPopover::addHeadline(const QString& text, int below)
{
    if (accessibleName().isEmpty()) {
        setAccessibleName(text);
    }
    QLabel* headline = textLabel(text, Look::font(TextStyle::headline));
    headline->setContentsMargins(0, 0, 0, below);
    content()->addWidget(headline);
}

void InfoPopover::addEntry(const InfoEntry& entry)
{
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(kUnderName);
    grid->setHorizontalSpacing(0);
    grid->setColumnStretch(2, 1);
    if (!entry.symbol.isEmpty()) {
        auto* symbol = new SymbolLabel(entry.symbol, kSymbolPixels, Tint{entry.color});
        grid->addWidget(symbol, 0, 0, Qt::AlignVCenter);
        grid->setColumnMinimumWidth(0, kSymbolPixels + form.behindSymbol);
    }
    QLabel* name = textLabel(entry.name, Look::font(form.nameStyle, QFont::Medium));
    name->setMinimumWidth(form.nameWidth);
    grid->addWidget(name, 0, 1);
    if (!entry.value.isEmpty()) {
        auto* value = new WrappedLabel(entry.value, Look::font(TextStyle::caption));
        value->setContentsMargins(kBehindName, 0, 0, 0);
        grid->addWidget(value, 0, 2);
    }
    const int first = form.isDetailUnderName ? 1 : 0;
    grid->addWidget(
        new WrappedLabel(entry.detail, Look::font(form.detailStyle)), 1, first, 1, 3 - first);
    content()->addLayout(grid);
}

void InfoPopover::addDivider(int below)
{
    content()->addWidget(new Line);
    content()->addSpacing(below);
}

void InfoPopover::addNote(const QString& text)
{
    content()->addWidget(new WrappedLabel(text, Look::font(form.detailStyle)));
}

} // namespace quillbrook
