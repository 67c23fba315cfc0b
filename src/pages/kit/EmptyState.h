#pragma once

#include <QWidget>

namespace quillbrook {

/// What stands in the middle of a column that has nothing to show: a symbol, a line, and a hint,
/// which may be empty.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    EmptyState(
        const QString& symbol, const QString& line, const QString& hint, QWidget* parent = nullptr);
};

} // namespace quillbrook
