#include "pages/kit/SheetHead.h"

#include "pages/kit/BorderedButton.h"
#include "pages/kit/Line.h"
#include "pages/kit/MarkView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <cmath>

namespace quillbrook {

namespace {

constexpr int kSidePadding = 20;
constexpr int kEdgePadding = 12; // above and below
constexpr int kSpacing = 12;
constexpr TextFace kFace{TextFamily::system, 13, TextWeight::bold};

MarkView* titleView(const QString& title)
{
    auto* view = new MarkView(title);
    view->setPictureHeight(static_cast<int>(std::ceil(lineHeight(kFace))));
    view->setPicture([text = title.toStdString()](Size size, const TextWidth&) {
        return std::vector<Mark>{
            textMark({.place = {0, 0, size.width, size.height}, .text = text, .face = kFace})};
    });
    return view;
}

} // namespace

SheetHead::SheetHead(const QString& title, const QString& buttonText, QWidget* parent)
    : QWidget(parent)
{
    auto* button = new BorderedButton({}, buttonText, buttonText);
    connect(button, &BorderedButton::clicked, this, &SheetHead::pressed);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(kSidePadding, kEdgePadding, kSidePadding, kEdgePadding);
    row->setSpacing(kSpacing);
    row->addWidget(titleView(title), 1);
    row->addWidget(button);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addLayout(row);
    whole->addWidget(new Line);
}

} // namespace quillbrook
