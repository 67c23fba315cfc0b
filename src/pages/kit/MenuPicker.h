#pragma once

#include "pages/kit/Spoken.h"

#include <QAbstractButton>
#include <QStringList>

class QMenu;

namespace quillbrook {

/// A button that shows the present one of several choices and opens a menu of all. The arrow keys
/// step through them, too.
class MenuPicker final : public QAbstractButton, public Spoken {
    Q_OBJECT

public:
    /// `name` is for screen readers alone; the picker shows no label.
    MenuPicker(const QString& name, int width, QWidget* parent = nullptr);

    /// Replaces the choices. The present one stays by its text where it is still among them, else
    /// the first is present. No signal.
    void setChoices(const QStringList& choices);

    /// -1 while none of the choices is present.
    int current() const { return chosen; }
    /// Without a signal.
    void setCurrent(int index);
    /// Shows a choice that is not among those offered, so that each of them can be picked.
    void showOther(const QString& choice);

    /// The menu as a press opens it, to be destroyed by the caller.
    QMenu* makeMenu();

    QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }
    QString accessibleValue() const override { return text(); }
    QSize sizeHint() const override;

signals:
    /// The user chose another one.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showChoice(const QString& choice);
    void openMenu();
    void pick(int index);

    QStringList choices{};
    int chosen = -1;
};

} // namespace quillbrook
