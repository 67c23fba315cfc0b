#include "platform/linux/bus/NotificationIcon.h"

#include <QDBusArgument>
#include <QImage>

namespace quillbrook {

namespace {

constexpr int kBytesOfAPixel = 4;
constexpr int kBitsOfAPart = 8;

} // namespace

NotificationIcon notificationIcon(const QImage& picture)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGBA8888);
    return {.width = image.width(),
        .height = image.height(),
        .pixels
        = QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes())};
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotificationIcon& icon)
{
    argument.beginStructure();
    argument << icon.width << icon.height << icon.width * kBytesOfAPixel << true << kBitsOfAPart
             << kBytesOfAPixel << icon.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotificationIcon& icon)
{
    int rowBytes = 0;
    bool hasOpacity = false;
    int bits = 0;
    int parts = 0;
    argument.beginStructure();
    argument >> icon.width >> icon.height >> rowBytes >> hasOpacity >> bits >> parts >> icon.pixels;
    argument.endStructure();
    return argument;
}

} // namespace quillbrook
