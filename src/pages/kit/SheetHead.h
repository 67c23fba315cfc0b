#pragma once

#include <QWidget>

namespace quillbrook {

/// The head of a sheet: its title, a button at the end, and a divider under both. A long title is
/// elided in the middle and stands whole in the tooltip.
class SheetHead final : public QWidget {
    Q_OBJECT

public:
    SheetHead(const QString& title, const QString& buttonText, QWidget* parent = nullptr);

signals:
    void pressed();
};

} // namespace quillbrook
