#pragma once

#include "report/Periods.h"

#include <QWidget>

class QHBoxLayout;

namespace quillbrook {

class DataProvider;

/// The line of a list's page that chooses the period and reads the store again.
class PeriodRow final : public QWidget {
    Q_OBJECT

public:
    PeriodRow(DataProvider& provider, NavTab tab, QWidget* parent = nullptr);

    /// Puts a widget in front of the button at the right.
    void add(QWidget* widget);

private:
    QHBoxLayout* row;
};

} // namespace quillbrook
