#pragma once

#include "pages/marks/Tint.h"

#include <QWidget>

#include <optional>

namespace quillbrook {

/// What a panel looks like. Without a `ground` nothing is painted.
struct PanelForm {
    int padding = 20; // device-independent pixels, on all sides
    double radius = 12;
    std::optional<Tint> ground = Tint{InterfaceColor::controlBackground};
};

/// The form of what stands on the page itself, without padding or ground.
PanelForm withoutPanel();

/// A rounded ground; its content is padded by the panel.
class Panel : public QWidget {
    Q_OBJECT

public:
    explicit Panel(QWidget* parent = nullptr);
    explicit Panel(const PanelForm& form, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PanelForm form;
};

} // namespace quillbrook
