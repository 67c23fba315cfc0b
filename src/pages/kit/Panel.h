#pragma once

#include <QWidget>

namespace quillbrook {

/// A rounded ground in the control background colour; its content is padded by the panel.
class Panel : public QWidget {
    Q_OBJECT

public:
    static constexpr int kPadding = 20;

    explicit Panel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillbrook
