#pragma once

#include <QPalette>
#include <QWidget>

#include <functional>

namespace quillbrook {

/// A symbol by itself. Decoration: screen readers don't find it.
class SymbolLabel final : public QWidget {
    Q_OBJECT

public:
    /// The colour is asked for at each drawing, as it may change with the palette.
    using Tint = std::function<QColor(const QPalette&)>;

    SymbolLabel(const QString& symbol, int pixels, Tint tint, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    Tint tint;
};

} // namespace quillbrook
