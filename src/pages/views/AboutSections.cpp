#include "pages/views/AboutSections.h"

#include "pages/figures/AboutFigures.h"
#include "pages/kit/FlowLayout.h"
#include "pages/kit/LinkButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/Section.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TagLabel.h"
#include "pages/kit/TextDrawing.h"
#include "pages/kit/WrappedLabel.h"
#include "pages/views/DocumentSheet.h"
#include "platform/qt/QtText.h"

#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr int kSymbolPixels = 20;
constexpr int kBehindSymbol = 12;
constexpr int kUnderTitle = 2;
constexpr int kTagSpacing = 6;
constexpr TagForm kTagForm{.ground = secondaryTint(0.08), .edgePadding = 4};

QLabel* titleLabel(std::string_view title)
{
    QLabel* label = textLabel(toQString(title), Look::font(TextStyle::body, QFont::Medium));
    label->setWordWrap(true);
    return label;
}

/// Two lines beside a symbol, the second one in a lighter tone.
QHBoxLayout* symbolRow(QWidget* symbol, std::string_view title, std::string_view detail)
{
    auto* lines = new QVBoxLayout;
    lines->setSpacing(kUnderTitle);
    lines->addWidget(titleLabel(title));
    lines->addWidget(new WrappedLabel(toQString(detail), Look::font(TextStyle::callout)));
    auto* row = new QHBoxLayout;
    row->setSpacing(kBehindSymbol);
    row->addWidget(symbol, 0, Qt::AlignVCenter);
    row->addLayout(lines, 1);
    return row;
}

QHBoxLayout* featureRow(const Feature& feature)
{
    return symbolRow(new SymbolLabel(toQString(feature.symbol), kSymbolPixels, Tint{feature.color}),
        feature.title, feature.detail);
}

TagLabel* techTag(std::string_view text)
{
    return new TagLabel(toQString(text), Look::codeFont(TextStyle::caption), kTagForm);
}

LinkButton* documentLink(const QString& text, std::string_view address)
{
    auto* link = new LinkButton(text, Look::font(TextStyle::callout));
    QObject::connect(link, &LinkButton::clicked, link, [link, address] {
        auto* sheet = new DocumentSheet(toQString(address), link);
        sheet->setAttribute(Qt::WA_DeleteOnClose);
        sheet->open();
    });
    return link;
}

QWidget* tagRow(std::span<const std::string_view> tags)
{
    auto* row = new QWidget;
    auto* flow = new FlowLayout(kTagSpacing, row);
    for (const std::string_view text : tags) {
        flow->addWidget(techTag(text));
    }
    return row;
}

} // namespace

Section* featureSection()
{
    auto* section = new Section("功能", {});
    for (const Feature& feature : kFeatures) {
        section->content().addLayout(featureRow(feature));
    }
    section->setEmpty(false);
    return section;
}

Section* promiseSection(const Technology& technology)
{
    auto* section = new Section("数据隐私 & 技术栈", {});
    QVBoxLayout& column = section->content();
    column.addLayout(
        symbolRow(new SymbolLabel("lock.shield.fill", kSymbolPixels, Tint{SystemColor::green}),
            "所有数据仅存储在本地 SQLite", "绝不外传，无网络请求，无第三方 SDK"));
    column.addWidget(documentLink("隐私政策 →", kMaker.privacyPage));
    column.addWidget(titleLabel("技术栈"));
    column.addWidget(new WrappedLabel(toQString(technology.line), Look::font(TextStyle::callout)));
    column.addWidget(tagRow(technology.tags));
    section->setEmpty(false);
    return section;
}

} // namespace quillbrook
