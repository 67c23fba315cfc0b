#pragma once

#include <QFrame>

class QVBoxLayout;

namespace quillbrook {

/// A small window that hangs on a widget and closes with Escape or a click elsewhere.
class Popover final : public QFrame {
    Q_OBJECT

public:
    /// `width` is that of the popover as a whole; its content is padded by 20.
    Popover(int width, QWidget* anchor);

    QVBoxLayout* content() { return column; }

    /// Opens under the anchor, its right edges in line, within the screen.
    void open();

signals:
    void closed();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* anchor;
    QVBoxLayout* column;
};

} // namespace quillbrook
