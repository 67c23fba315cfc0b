#include "pages/views/AboutView.h"

#include "pages/kit/Look.h"
#include "pages/kit/Section.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/AboutSections.h"
#include "pages/views/BundleAbout.h"
#include "pages/views/MakerLine.h"
#include "platform/HostFacts.h"
#include "platform/qt/QtText.h"

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kWidest = 640; // of the lines, as longer ones are hard to read
constexpr int kMottoPixels = 16;
constexpr int kIconPixels = 48;
constexpr int kNamePixels = 24;
constexpr int kHeaderSpacing = 8;
constexpr int kSpacing = 20; // between the parts

QVBoxLayout* header(const AboutValues& values)
{
    auto* column = new QVBoxLayout;
    column->setSpacing(kHeaderSpacing);
    const auto add = [column](QWidget* widget) { column->addWidget(widget, 0, Qt::AlignHCenter); };
    const QFont motto = Look::serifFont(kMottoPixels, QFont::Medium);
    add(secondaryLabel("观自在菩萨，行深般若波罗蜜多时，", motto));
    add(textLabel("墨川五蕴皆空", motto));
    column->addSpacing(kHeaderSpacing);
    add(new SymbolLabel("chart.bar.doc.horizontal", kIconPixels, Tint{SystemColor::blue}));
    add(textLabel("墨川·Quillbrook", Look::systemFont(kNamePixels, QFont::Bold)));
    add(secondaryLabel(toQString(versionText(values)), Look::font(TextStyle::callout)));
    add(secondaryLabel(toQString(buildDateText(values)), Look::font(TextStyle::caption)));
    add(new MakerLine(kMaker));
    return column;
}

} // namespace

AboutView::AboutView(const PageTools& tools, QWidget* parent)
    : Page({.around = 24, .between = 0}, parent)
{
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* middle = new QWidget;
    middle->setMaximumWidth(kWidest);
    auto* parts = new QVBoxLayout(middle);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->setSpacing(kSpacing);
    parts->addLayout(header(bundleAbout(tools.platform)));
    parts->addWidget(featureSection());
    parts->addWidget(promiseSection(technologyOn(tools.platform.hostFacts.system())));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(middle, 1);
    row->addStretch();
    column()->addLayout(row);
    column()->addStretch();
}

} // namespace quillbrook
