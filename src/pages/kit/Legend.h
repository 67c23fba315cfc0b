#pragma once

#include "pages/kit/Chip.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <optional>

class QLayout;

namespace quillbrook {

/// What a legend says of one colour.
struct LegendChip {
    QString name{};
    Tint tint{};
    QString help{}; // the tooltip; empty for none but the one of a name that is cut
};

/// How a legend stands.
struct LegendForm {
    enum class Arrangement : std::uint8_t {
        flow, ///< rows from the left
        centeredFlow, ///< rows in the middle, for the foot of a chart
        column, ///< one under the other
    };

    Chip::Kind kind = Chip::Kind::label;
    Arrangement arrangement = Arrangement::flow;
    int spacing = 6;
};

/// The colours of a picture and their names, each a chip.
class Legend final : public QWidget {
    Q_OBJECT

public:
    explicit Legend(LegendForm form, QWidget* parent = nullptr);

    /// A chip that stays keeps its focus.
    void setEntries(const QList<LegendChip>& entries);

    /// Marks the chip of this name, and no other.
    void setHighlighted(const std::optional<QString>& name);

signals:
    /// A chip that is a button was pressed.
    void pressed(const QString& name);

private:
    /// The chip of this name out of those there were, else a new one.
    Chip* takeChip(QList<Chip*>& before, const LegendChip& entry);

    LegendForm form;
    QLayout* place;
    QList<Chip*> chips{};
    std::optional<QString> highlighted{};
};

} // namespace quillbrook
