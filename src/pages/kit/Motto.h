#pragma once

#include <QLabel>

namespace quillbrook {

/// The line that closes a page.
class Motto final : public QLabel {
    Q_OBJECT

public:
    explicit Motto(const QString& text, QWidget* parent = nullptr);
};

} // namespace quillbrook
