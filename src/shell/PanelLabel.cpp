#include "shell/PanelLabel.h"

#include "platform/PanelItem.h"

#include <utility>

namespace quillbrook {

PanelLabel::PanelLabel(MenuBarVM& model, PanelItem& item,
    std::function<void(MenuAction, const std::string& startupId)> perform)
    : model(model)
    , item(item)
    , perform(std::move(perform))
{
    const auto changed = [this](const auto&) { update(); };
    subscriptions.push_back(model.activeHoursStr.observe(changed));
    subscriptions.push_back(model.alertCount.observe(changed));
    subscriptions.push_back(model.tokenCount.observe(changed));
    subscriptions.push_back(model.permissionMissing.observe(changed));
    item.setHandlers({.menuOpens = [this] { update(); },
        .chosen
        = [this](std::uint32_t id, const std::string& startupId) { chosen(id, startupId); }});
    update();
}

PanelLabel::~PanelLabel()
{
    item.setHandlers({});
}

void PanelLabel::update()
{
    PanelItemContent content{
        .label = model.activeHoursStr.get(), .isAlert = model.isWarning(), .menu = {}};
    for (const auto& entry : model.menu()) {
        content.menu.push_back(entry
                ? PanelItemContent::Entry{.id = static_cast<std::uint32_t>(entry->action),
                    .title = entry->title}
                : PanelItemContent::Entry{});
    }
    item.show(content);
}

void PanelLabel::chosen(std::uint32_t id, const std::string& startupId)
{
    for (const auto& entry : model.menu()) {
        if (entry && static_cast<std::uint32_t>(entry->action) == id) {
            return perform(entry->action, startupId);
        }
    }
}

} // namespace quillbrook
