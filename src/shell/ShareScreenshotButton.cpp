#include "shell/ShareScreenshotButton.h"

#include "base/PrivateFiles.h"
#include "pages/figures/ScreenshotCrop.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QImage>
#include <QMenu>
#include <QPixmap>
#include <QSaveFile>

#include <cmath>

namespace quillbrook {

namespace {

constexpr int kSymbolPixels = 16;
// Under a fixed point of the window's frame, wherever the button stands.
constexpr QPoint kMenuPlace(36, 22 + 1);

void writePng(const QString& path, const QImage& picture)
{
    const UsualFileModes usual;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && picture.save(&file, "PNG")) {
        file.commit();
    }
}

void saveAsPng(QWidget* window, const QImage& picture)
{
    auto* dialog = new QFileDialog(window, "存储图片");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setMimeTypeFilters({"image/png"});
    dialog->setDefaultSuffix("png");
    dialog->selectFile("Quillbrook.png");
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
        [picture](const QString& path) { writePng(path, picture); });
    dialog->open();
}

} // namespace

ShareScreenshotButton::ShareScreenshotButton(QWidget* parent)
    : IconButton("square.and.arrow.up", kSymbolPixels, "分享", parent)
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
    menu->addAction("存储为 PNG…", menu, [window, picture] { saveAsPng(window, picture); });
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
