#pragma once

#include "pages/kit/Look.h"
#include "pages/marks/Tint.h"

#include <QWidget>

namespace quillbrook {

/// How large and how strong an empty state is.
struct EmptyForm {
    int symbolPixels = 40;
    Tint symbolTint = secondaryTint();
    TextStyle lineStyle = TextStyle::title3;
    Tint lineTint = primaryTint();
};

/// What stands in the middle of a column that has nothing to show: a symbol, a line, and a hint,
/// which may be empty.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    EmptyState(
        const QString& symbol, const QString& line, const QString& hint, QWidget* parent = nullptr);
    EmptyState(const QString& symbol, const QString& line, const QString& hint,
        const EmptyForm& form, QWidget* parent = nullptr);
};

} // namespace quillbrook
