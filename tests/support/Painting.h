#pragma once

#include <QColor>
#include <QPainterPath>

#include <functional>
#include <string>
#include <vector>

class QPainter;
class QWidget;

namespace quillbrook {

/// What was painted, as data, in its order: tests compare it where a picture would have to be
/// looked at.
struct Painting {
    struct Shape {
        QPainterPath outline{};
        QColor fill{}; // invalid for none
        QColor line{}; // the same
    };
    struct Text {
        std::string text{}; // in one script; a line of several scripts is several texts
        QColor color{};
    };

    std::vector<Shape> shapes{};
    std::vector<Text> texts{};

    /// All texts, one behind the other.
    std::string allText() const;

    /// Whether a shape of this form, at whatever size and place, is filled with a colour.
    bool hasFilled(const QPainterPath& form, const QColor& color) const;

    /// The fills of all circles, in their order.
    std::vector<QColor> circles() const;
};

/// What a widget paints with its children, at its present size.
Painting paintingOf(QWidget& widget);

/// What `draw` paints.
Painting paintingOf(const std::function<void(QPainter&)>& draw);

} // namespace quillbrook
