#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace quillbrook {

/// A page that is a column. It scrolls where it is higher than its place, and where its place is
/// narrower than what stands on it.
class ScrollPage : public QScrollArea {
    Q_OBJECT

public:
    struct Spacing {
        int around = 0; // device-independent pixels, on all sides
        int between = 0;
    };

    explicit ScrollPage(Spacing spacing, QWidget* parent = nullptr);

    QVBoxLayout* column() { return content; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void followFocus(QWidget* next);

    QVBoxLayout* content;
};

} // namespace quillbrook
