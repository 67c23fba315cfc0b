#pragma once

#include "pages/figures/AboutFigures.h"
#include "pages/kit/Spoken.h"

#include <QWidget>

namespace quillbrook {

/// A small window that says which program this is, and which release of it. Escape closes it.
class AboutPanelView final : public QWidget, public Spoken {
    Q_OBJECT

public:
    explicit AboutPanelView(const AboutValues& values);

    QAccessible::Role accessibleRole() const override { return QAccessible::Window; }

private:
    void addShortcut(const QKeySequence& keys);
};

} // namespace quillbrook
