#include "pages/kit/NoteBox.h"

#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TintedLabel.h"
#include "pages/kit/WrappedLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kPadding = 12;
constexpr double kRadius = 8;
constexpr double kGroundOpacity = 0.05;
constexpr int kSpacing = 6;
constexpr int kSymbolPixels = 12;
constexpr int kBehindSymbol = 5;

} // namespace

NoteBox::NoteBox(
    SystemColor color, const QString& headline, const QStringList& lines, QWidget* parent)
    : Panel({.padding = kPadding, .radius = kRadius, .ground = Tint{color, kGroundOpacity}}, parent)
{
    auto* head = new QHBoxLayout;
    head->setSpacing(kBehindSymbol);
    head->addWidget(new SymbolLabel("info.circle.fill", kSymbolPixels, Tint{color}));
    head->addWidget(
        new TintedLabel(headline, Look::font(TextStyle::caption, QFont::Bold), Tint{color}));
    head->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addLayout(head);
    for (const QString& line : lines) {
        column->addWidget(new WrappedLabel(line, Look::font(TextStyle::caption)));
    }
}

} // namespace quillbrook
