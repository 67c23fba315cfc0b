#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

/// The foot of the sidebar, which leads to the about page; checked is selected.
class AboutRow final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    explicit AboutRow(QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace quillbrook
