#pragma once

#include "base/Property.h"
#include "shell/model/MenuBarVM.h"

#include <functional>
#include <string>
#include <vector>

namespace quillbrook {

class PanelItem;

/// The menu bar's label and menu in the panel of a desktop without a tray. Main thread only.
class PanelLabel {
public:
    /// `perform` does what an entry promises; its second argument is what the desktop gives for the
    /// window that may show up. `model` and `item` outlive the label.
    PanelLabel(MenuBarVM& model, PanelItem& item,
        std::function<void(MenuAction, const std::string& startupId)> perform);
    ~PanelLabel();

    PanelLabel(const PanelLabel&) = delete;
    PanelLabel& operator=(const PanelLabel&) = delete;

private:
    void update();
    void chosen(std::uint32_t id, const std::string& startupId);

    MenuBarVM& model;
    PanelItem& item;
    std::function<void(MenuAction, const std::string& startupId)> perform;
    std::vector<Subscription> subscriptions{};
};

} // namespace quillbrook
