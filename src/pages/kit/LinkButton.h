#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

/// A text that leads somewhere, in the colour of links; underlined under the pointer.
class LinkButton final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    LinkButton(const QString& text, const QFont& font, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillbrook
