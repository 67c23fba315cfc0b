#include "shell/AboutPanelView.h"

#include "pages/kit/Look.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TagLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/views/MakerLine.h"
#include "platform/Directories.h"
#include "platform/qt/QtText.h"
#include "shell/AppIcon.h"

#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr QSize kSize(400, 280);
constexpr int kSpacing = 8;
constexpr int kIconPixels = 48;
constexpr int kNamePixels = 24;
constexpr int kMakerPixels = 13;
constexpr double kGroundOpacity = 0.1;

TagLabel* chip(const std::string& text, SystemColor color)
{
    return new TagLabel(
        toQString(text), Look::font(TextStyle::caption), {.ground = {color, kGroundOpacity}});
}

QHBoxLayout* releaseRow(const AboutValues& values)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addStretch();
    row->addWidget(chip(versionText(values), SystemColor::blue));
    row->addWidget(chip(buildDateText(values), SystemColor::orange));
    row->addStretch();
    return row;
}

} // namespace

AboutPanelView::AboutPanelView(const AboutValues& values)
{
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
        | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    setWindowTitle("关于 Quillbrook");
    setWindowIcon(appIcon());
    setFixedSize(kSize);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(kSpacing);
    const auto add = [column](QWidget* widget) { column->addWidget(widget, 0, Qt::AlignHCenter); };
    column->addStretch();
    add(new SymbolLabel("chart.bar.doc.horizontal", kIconPixels, Tint{SystemColor::blue}));
    add(textLabel("Quillbrook", Look::systemFont(kNamePixels, QFont::Bold)));
    add(secondaryLabel("墨川 · 墨川书影", Look::systemFont(kMakerPixels)));
    column->addLayout(releaseRow(values));
    add(secondaryLabel(toQString(kDataFolderName), Look::font(TextStyle::caption)));
    add(new MakerLine(kMaker));
    column->addStretch();
    for (const QKeySequence& keys :
        {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        addShortcut(keys);
    }
}

void AboutPanelView::addShortcut(const QKeySequence& keys)
{
    auto* close = new QAction(this);
    close->setShortcut(keys);
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
}

} // namespace quillbrook
