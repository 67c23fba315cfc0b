#include "platform/linux/bus/IBusAddress.h"

#include "platform/linux/bus/InputMethodNames.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace quillbrook {

namespace {

constexpr qint64 kMaxAddressFileBytes = 64 * 1024;

QString machineId()
{
    for (const char* path : {"/etc/machine-id", "/var/lib/dbus/machine-id"}) {
        QFile file(QString::fromLatin1(path));
        if (file.open(QIODevice::ReadOnly)) {
            return QString::fromLatin1(file.read(64)).trimmed();
        }
    }
    return {};
}

/// The number in ":0.0".
QString displayNumber()
{
    const QString display = qEnvironmentVariable("DISPLAY");
    return display.section(QLatin1Char(':'), 1).section(QLatin1Char('.'), 0, 0);
}

/// The file for this display, which a Wayland desktop may have by its own name beside that of the X
/// server that is its guest: the one that was written last.
QString addressFile()
{
    QFileInfo newest;
    for (const QString& display : {qEnvironmentVariable("WAYLAND_DISPLAY"), displayNumber()}) {
        const QFileInfo file(ibusAddressDirectory() + QLatin1Char('/') + machineId()
            + QStringLiteral("-unix-") + display);
        if (!newest.exists() || (file.exists() && file.lastModified() > newest.lastModified())) {
            newest = file;
        }
    }
    return newest.filePath();
}

} // namespace

QString ibusAddressDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/ibus/bus");
}

QString ibusAddress()
{
    const QString named = qEnvironmentVariable("IBUS_ADDRESS");
    QFile file(addressFile());
    if (!named.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return named;
    }
    const auto found = ibusAddressIn(file.read(kMaxAddressFileBytes).toStdString());
    return found ? QString::fromStdString(*found) : QString();
}

} // namespace quillbrook
