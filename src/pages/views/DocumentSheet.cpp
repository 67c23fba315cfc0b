#include "pages/views/DocumentSheet.h"

#include "base/Fatal.h"
#include "pages/kit/Look.h"
#include "pages/kit/ScrollPage.h"
#include "pages/kit/SheetHead.h"
#include "pages/kit/SymbolLabel.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace quillbrook {

namespace {

constexpr QSize kSize(480, 560);
constexpr ScrollPage::Spacing kSpacing{.around = 20, .between = 8};
constexpr int kAboveHeading = 10;
constexpr int kBulletPixels = 6;
constexpr int kAboveBullet = 7; // which is then at half the height of a line
constexpr int kBehindBullet = 8;

std::vector<DocumentBlock> blocksAt(const QString& address)
{
    QFile file(address);
    if (!file.open(QIODevice::ReadOnly)) {
        fatal("DocumentSheet: a document that the program doesn't carry");
    }
    return documentBlocks(file.readAll().toStdString());
}

QString titleOf(const std::vector<DocumentBlock>& blocks)
{
    for (const DocumentBlock& block : blocks) {
        if (block.kind == DocumentBlock::Kind::title) {
            return toQString(block.text);
        }
    }
    fatal("DocumentSheet: a document without a title");
}

QLabel* lineLabel(const DocumentBlock& block, const QFont& font)
{
    QLabel* label = textLabel(toQString(block.text), font);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel* headingLabel(const DocumentBlock& block)
{
    QLabel* label = lineLabel(block, Look::font(TextStyle::headline));
    label->setContentsMargins(0, kAboveHeading, 0, 0);
    return label;
}

QHBoxLayout* itemRow(const DocumentBlock& block)
{
    auto* bullet = new QVBoxLayout;
    bullet->addSpacing(kAboveBullet);
    bullet->addWidget(new SymbolLabel("circle", kBulletPixels, secondaryTint()));
    bullet->addStretch();
    auto* row = new QHBoxLayout;
    row->setSpacing(kBehindBullet);
    row->addLayout(bullet);
    row->addWidget(lineLabel(block, Look::font(TextStyle::body)), 1);
    return row;
}

void add(QVBoxLayout& column, const DocumentBlock& block)
{
    switch (block.kind) {
    case DocumentBlock::Kind::title:
        return; // stands in the sheet's head
    case DocumentBlock::Kind::heading:
        return column.addWidget(headingLabel(block));
    case DocumentBlock::Kind::paragraph:
        return column.addWidget(lineLabel(block, Look::font(TextStyle::body)));
    case DocumentBlock::Kind::item:
        return column.addLayout(itemRow(block));
    }
}

} // namespace

DocumentSheet::DocumentSheet(const QString& address, QWidget* owner)
    : DocumentSheet(blocksAt(address), owner)
{
}

DocumentSheet::DocumentSheet(const std::vector<DocumentBlock>& blocks, QWidget* owner)
    : Sheet(titleOf(blocks), kSize, owner)
{
    auto* head = new SheetHead(windowTitle(), "完成");
    connect(head, &SheetHead::pressed, this, &QDialog::accept);
    auto* text = new ScrollPage(kSpacing);
    text->setAccessibleName(windowTitle());
    text->setFocusPolicy(Qt::StrongFocus); // for the keys that scroll
    for (const DocumentBlock& block : blocks) {
        add(*text->column(), block);
    }
    text->column()->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head);
    column->addWidget(text, 1);
    text->setFocus();
}

} // namespace quillbrook
