#pragma once

#include "pages/kit/Spoken.h"
#include "pages/marks/Tint.h"

#include <QWidget>

namespace quillbrook {

/// How a tag looks.
struct TagForm {
    Tint ground{};
    int sidePadding = 8; // device-independent pixels
    int edgePadding = 3; // above and below
    double radius = 5;
};

/// A short text on a rounded ground of its own. Its height follows from the font alone, so that
/// neighbours are level in every script.
class TagLabel final : public QWidget, public Spoken {
    Q_OBJECT

public:
    TagLabel(
        const QString& text, const QFont& font, const TagForm& form, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TagForm form;
};

} // namespace quillbrook
