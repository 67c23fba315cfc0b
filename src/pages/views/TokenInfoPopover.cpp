#include "pages/views/TokenInfoPopover.h"

#include "pages/figures/KeylogFigures.h"
#include "pages/kit/InfoPopover.h"
#include "platform/qt/QtText.h"

namespace quillbrook {

namespace {

constexpr InfoForm kForm{.width = 350,
    .spacing = 6,
    .nameStyle = TextStyle::caption,
    .detailStyle = TextStyle::caption2,
    .behindSymbol = 8,
    .nameWidth = 56};
constexpr int kAroundDivider = 12; // that under the headline, which is more than among the entries

} // namespace

void openTokenInfo(QWidget* anchor)
{
    auto* popover = new InfoPopover(kForm, anchor);
    popover->setAttribute(Qt::WA_DeleteOnClose);
    popover->addHeadline("Token 换算逻辑", kAroundDivider - kForm.spacing);
    popover->addDivider(kAroundDivider - kForm.spacing);
    for (const TokenInfo& each : tokenInfos()) {
        popover->addEntry({.name = toQString(each.name),
            .value = toQString(each.value),
            .detail = toQString(each.note)});
        popover->addDivider();
    }
    popover->addNote("参考：基于 GPT-4o tokenizer 实测统计");
    popover->addNote("数据来自 keylog 工具全局 keyDown 计数");
    popover->open();
}

} // namespace quillbrook
