#pragma once

#include <QTimer>
#include <QWidget>

namespace quillbrook {

/// A wheel of spokes that turns while it is visible.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    explicit Spinner(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer timer{this};
    int turn = 0; // the spoke that is darkest
};

} // namespace quillbrook
