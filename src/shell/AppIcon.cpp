#include "shell/AppIcon.h"

#include <QSize>
#include <QString>

namespace quillbrook {

namespace {

QString fileOf(int size)
{
    return QStringLiteral(":/icons/%1.png").arg(size);
}

} // namespace

QIcon appIcon()
{
    QIcon own;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        own.addFile(fileOf(size), QSize(size, size));
    }
    return QIcon::fromTheme(QStringLiteral("cn.tarnlow.quillbrook"), own);
}

QImage appPicture()
{
    return QImage(fileOf(64));
}

} // namespace quillbrook
