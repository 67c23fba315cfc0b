#pragma once

#include "pages/figures/LifeFigures.h"

#include <QWidget>

namespace quillbrook {

class Clock;
class LifeGridView;
class MenuPicker;

/// The grid of a life with the picker of its birth year and a note.
class LifeGridSection final : public QWidget {
    Q_OBJECT

public:
    explicit LifeGridSection(const Clock& clock, QWidget* parent = nullptr);

    /// Shows the grid of somebody born in `birthYear`, which needs not be one that can be picked.
    void setLife(int birthYear, int age);

    /// Lets the present year answer the bell.
    void setShowBellEffect(bool isOn);

signals:
    void birthYearPicked(int year);

private:
    MenuPicker* picker;
    LifeGridView* grid;
};

} // namespace quillbrook
