#pragma once

#include "platform/PanelItem.h"

#include <functional>
#include <string>
#include <utility>

namespace quillbrook {

/// A panel without a tray that takes what it is given, and whose menu a test opens.
class VirtualPanelItem final : public PanelItem {
public:
    void show(const PanelItemContent& content) override { kept = content; }
    void setHandlers(Handlers next) override { handlers = std::move(next); }
    void followTray(std::function<void(bool)> body) override { body(false); }

    const PanelItemContent& shown() const { return kept; }

    void openMenu() const { handlers.menuOpens(); }
    void choose(std::uint32_t id, const std::string& startupId) const
    {
        handlers.chosen(id, startupId);
    }

private:
    PanelItemContent kept{};
    Handlers handlers{};
};

} // namespace quillbrook
