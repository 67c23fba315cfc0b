#pragma once

#include "pages/kit/Look.h"

#include <QWidget>

namespace quillbrook {

/// A symbol by itself. Decoration: screen readers don't find it.
class SymbolLabel final : public QWidget {
    Q_OBJECT

public:
    SymbolLabel(const QString& symbol, int pixels, const Tint& tint, QWidget* parent = nullptr);
    SymbolLabel(const QString& symbol, int pixels, PaletteColor color, QWidget* parent = nullptr);

    const QString& symbolName() const { return symbol; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    PaletteColor color;
};

} // namespace quillbrook
