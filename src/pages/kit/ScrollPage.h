#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace quillbrook {

/// A page that is a column and scrolls when it is higher than its place.
class ScrollPage : public QScrollArea {
    Q_OBJECT

public:
    struct Spacing {
        int around = 0; // device-independent pixels, on all sides
        int between = 0;
    };

    explicit ScrollPage(Spacing spacing, QWidget* parent = nullptr);

    QVBoxLayout* column() { return content; }

private:
    QVBoxLayout* content;
};

} // namespace quillbrook
