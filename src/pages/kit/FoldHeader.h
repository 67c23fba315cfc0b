#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>

namespace quillbrook {

/// The headline of a part of a page that can be folded: a button over the whole width, checked
/// while the part is open.
class FoldHeader final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    explicit FoldHeader(const QString& title, QWidget* parent = nullptr);

    /// What stands behind the title in small type.
    void setNote(const QString& newNote);

    /// Draws the line that divides this part of the page from the one above, indented at both
    /// sides; not a widget of its own, as a page may have hundreds of parts.
    void setDivided(bool newDivided);

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QString accessibleValue() const override { return note; }
    std::optional<bool> isUnfolded() const override { return isChecked(); }
    QSize sizeHint() const override;

protected:
    void checkStateSet() override;
    void nextCheckState() override;
    void paintEvent(QPaintEvent* event) override;

private:
    void tellFolding();

    QString note{};
    bool isDivided = false;
};

} // namespace quillbrook
