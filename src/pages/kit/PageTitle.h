#pragma once

#include "pages/kit/Spoken.h"

#include <QWidget>

#include <cstdint>

namespace quillbrook {

/// A page's title: one line, black weight, painted from left to right in orange, yellow, orange. It
/// becomes smaller where the page is narrow.
class PageTitle final : public QWidget, public Spoken {
    Q_OBJECT

public:
    enum class Design : std::uint8_t { system, serif };

    PageTitle(const QString& title, Design design, QWidget* parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillbrook
