#include "pages/views/AppTreemapSection.h"

#include "pages/figures/AppPalette.h"
#include "pages/kit/Chip.h"
#include "pages/kit/FlowLayout.h"
#include "pages/kit/Line.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kNothingHeight = 120;
constexpr int kChipSpacing = 6;
constexpr int kSpacing = 12;

} // namespace

AppTreemapSection::AppTreemapSection(AppTreemap::CategoryChange onCategoryChange, QWidget* parent)
    : QWidget(parent)
    , nothing(secondaryLabel("暂无数据", Look::font(TextStyle::caption)))
    , content(new QWidget)
    , treemap(new AppTreemap(std::move(onCategoryChange)))
    , legend(new FlowLayout(kChipSpacing))
{
    nothing->setFixedHeight(kNothingHeight);
    nothing->setAlignment(Qt::AlignCenter);

    auto* inside = new QVBoxLayout(content);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->setSpacing(kSpacing);
    inside->addWidget(treemap);
    inside->addWidget(new Line);
    inside->addLayout(legend);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing);
    column->addWidget(textLabel("应用的活跃时长", Look::font(TextStyle::headline)));
    column->addWidget(nothing);
    column->addWidget(content);
    setAppUsage({});
}

void AppTreemapSection::setAppUsage(const std::vector<AppUsage>& appUsage)
{
    const std::span<const AppUsage> set = treemapSet(appUsage);
    treemap->setApps({set.begin(), set.end()});
    legend->clear();
    for (std::size_t place = 0; place < set.size(); ++place) {
        const SystemColor color = paletteColor(place);
        auto* chip = new Chip(Chip::Kind::label, toQString(set[place].appName),
            [color](const QPalette& palette) { return Look::color(color, palette); });
        chip->setToolTip(plainToolTip(toQString(legendHelp(set[place]))));
        legend->addWidget(chip);
    }
    nothing->setVisible(appUsage.empty());
    content->setVisible(!appUsage.empty());
}

} // namespace quillbrook
