#pragma once

#include "pages/kit/Look.h"

#include <QString>
#include <QWidget>

class QHBoxLayout;

namespace quillbrook {

/// The first line of a page: its title at the left, and at the right what chooses and explains.
class PageHead final : public QWidget {
    Q_OBJECT

public:
    /// `spacing` lies between the widgets at the right.
    explicit PageHead(QWidget* title, int spacing = 12, QWidget* parent = nullptr);

    /// Puts a widget behind those at the right.
    void add(QWidget* widget);

private:
    QHBoxLayout* row;
};

/// A title in a plain style, bold, for a head; with a caption under it where that is not empty.
QWidget* plainTitle(const QString& title, TextStyle style, const QString& caption = {});

} // namespace quillbrook
