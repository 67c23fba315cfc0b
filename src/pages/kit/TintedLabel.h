#pragma once

#include "pages/marks/Tint.h"

#include <QLabel>

namespace quillbrook {

/// A line of text in a tint that follows the palette.
class TintedLabel final : public QLabel {
    Q_OBJECT

public:
    TintedLabel(
        const QString& text, const QFont& font, const Tint& tint, QWidget* parent = nullptr);

    void setTint(const Tint& newTint);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyTint();

    Tint tint;
};

} // namespace quillbrook
