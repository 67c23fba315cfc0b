#pragma once

#include "pages/kit/Spoken.h"

#include <QList>
#include <QStringList>
#include <QWidget>

class QAbstractButton;

namespace quillbrook {

/// A row of segments of which one is chosen; one stop of the Tab key.
class SegmentedPicker : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `name` is for screen readers alone; the picker shows no label.
    SegmentedPicker(
        const QString& name, const QStringList& labels, int width, QWidget* parent = nullptr);

    int current() const { return chosen; }

    /// Moves the choice without a signal.
    void setCurrent(int index);

    QAccessible::Role accessibleRole() const override { return QAccessible::PageTabList; }
    QString accessibleValue() const override;
    QSize sizeHint() const override;

signals:
    /// The user chose another segment.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void pick(int index);

    QList<QAbstractButton*> segments{};
    int chosen = 0;
};

} // namespace quillbrook
