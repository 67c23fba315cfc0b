#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

/// A page's row in the sidebar; checked is selected.
class SidebarRow final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    SidebarRow(const QString& symbol, const QString& title, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::ListItem; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString symbol;
};

} // namespace quillbrook
