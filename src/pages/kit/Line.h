#pragma once

#include <QWidget>

namespace quillbrook {

/// A divider: a horizontal line in the separator colour, within the widget's margins.
class Line final : public QWidget {
    Q_OBJECT

public:
    explicit Line(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillbrook
