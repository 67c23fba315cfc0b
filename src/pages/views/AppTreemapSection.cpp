#include "pages/views/AppTreemapSection.h"

#include "pages/figures/AppPalette.h"
#include "pages/kit/Legend.h"
#include "pages/kit/Line.h"
#include "pages/kit/Section.h"
#include "platform/qt/QtText.h"

#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kNothingHeight = 120;

} // namespace

AppTreemapSection::AppTreemapSection(AppTreemap::CategoryChange onCategoryChange, QWidget* parent)
    : QWidget(parent)
    , section(
          new Section("应用的活跃时长", {.panel = withoutPanel(), .emptyHeight = kNothingHeight}))
    , treemap(new AppTreemap(std::move(onCategoryChange)))
    , legend(new Legend({}))
{
    section->content().addWidget(treemap);
    section->content().addWidget(new Line);
    section->content().addWidget(legend);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(section);
}

void AppTreemapSection::setAppUsage(const std::vector<AppUsage>& appUsage)
{
    const std::span<const AppUsage> set = treemapSet(appUsage);
    treemap->setApps({set.begin(), set.end()});
    QList<LegendChip> chips;
    for (const AppUsage& app : set) {
        const SystemColor color = paletteColor(static_cast<std::size_t>(chips.size()));
        chips.append(
            {.name = toQString(app.appName), .tint = {color}, .help = toQString(legendHelp(app))});
    }
    legend->setEntries(chips);
    section->setEmpty(appUsage.empty());
}

} // namespace quillbrook
