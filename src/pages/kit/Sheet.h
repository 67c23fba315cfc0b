#pragma once

#include <QDialog>

namespace quillbrook {

/// A dialogue of a fixed size that holds its window until it is dismissed; Escape dismisses it.
class Sheet : public QDialog {
    Q_OBJECT

public:
    Sheet(const QString& title, QSize size, QWidget* owner);
};

} // namespace quillbrook
