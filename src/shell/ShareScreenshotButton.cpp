#include "shell/ShareScreenshotButton.h"

#include "pages/figures/ScreenshotCrop.h"
#include "pages/kit/SaveDialogue.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QMenu>
#include <QPixmap>

#include <cmath>

namespace quillbrook {

namespace {

constexpr int kSymbolPixels = 16;
// Under a fixed point of the window's frame, wherever the button stands.
constexpr QPoint kMenuPlace(36, 22 + 1);

QByteArray pngOf(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

} // namespace

ShareScreenshotButton::ShareScreenshotButton(UserDefaults& defaults, QWidget* parent)
    : IconButton("square.and.arrow.up", kSymbolPixels, "分享", parent)
    , defaults(defaults)
{
    setToolTip({});
    connect(this, &QAbstractButton::clicked, this, &ShareScreenshotButton::share);
}

void ShareScreenshotButton::share()
{
    QWidget* window = QApplication::activeWindow();
    if (window == nullptr) {
        return;
    }
    const QImage content = window->grab().toImage();
    if (content.isNull()) {
        return;
    }
    const QImage picture = pagePart(content);
    auto* menu = new QMenu(window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The clipboard hands the picture to other programs for as long as this one runs.
    menu->addAction(
        "拷贝图片", menu, [picture] { QGuiApplication::clipboard()->setImage(picture); });
    menu->addAction("存储为 PNG…", menu, [this, window, picture] {
        offerToSave(window,
            {.title = "存储图片",
                .mimeType = "image/png",
                .suffix = "png",
                .name = "Quillbrook.png",
                .bytes = pngOf(picture)},
            defaults);
    });
    menu->popup(window->frameGeometry().topLeft() + kMenuPlace);
}

QImage pagePart(const QImage& content)
{
    const double scale = content.devicePixelRatio();
    const auto pixels
        = [scale](double points) { return static_cast<int>(std::lround(points * scale)); };
    const Rect part = screenshotCrop({content.width() / scale, content.height() / scale});
    // With room for transparency, as the part may run past the edge.
    return content.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .copy(pixels(part.x), 0, pixels(part.width), content.height());
}

} // namespace quillbrook
