#include "pages/views/MakerLine.h"

#include "pages/figures/AboutFigures.h"
#include "pages/kit/LinkButton.h"
#include "pages/kit/Look.h"
#include "pages/kit/TextDrawing.h"
#include "platform/qt/QtText.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QUrl>

namespace quillbrook {

namespace {

constexpr int kSpacing = 6;

} // namespace

MakerLine::MakerLine(const Maker& maker, QWidget* parent) : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSpacing);
    row->addStretch();
    row->addWidget(secondaryLabel(toQString(maker.credit), Look::font(TextStyle::caption)));
    if (!maker.site.empty()) {
        const QUrl address(toQString(maker.site));
        auto* link = new LinkButton(address.host(), Look::font(TextStyle::caption));
        connect(
            link, &LinkButton::clicked, this, [address] { QDesktopServices::openUrl(address); });
        row->addWidget(link);
    }
    row->addStretch();
}

} // namespace quillbrook
