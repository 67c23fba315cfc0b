#include "platform/linux/appearance/KdeGlobals.h"

#include "platform/linux/appearance/KdeColors.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace quillbrook {

QString KdeGlobals::pathOfThisUser()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/kdeglobals");
}

KdeGlobals::KdeGlobals(QString path, std::function<void()> changed)
    : path(std::move(path))
    , changed(std::move(changed))
    , told(read())
{
    connect(&watcher, &QFileSystemWatcher::fileChanged, this, &KdeGlobals::update);
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, &KdeGlobals::update);
    watcher.addPath(QFileInfo(this->path).path());
    watch();
}

/// A file that is replaced is watched no longer: the folder tells when the next one is there.
void KdeGlobals::watch()
{
    if (!watcher.files().contains(path) && QFile::exists(path)) {
        watcher.addPath(path);
    }
}

void KdeGlobals::update()
{
    watch();
    const Appearance next = read();
    if (next != std::exchange(told, next)) {
        changed();
    }
}

Appearance KdeGlobals::read() const
{
    constexpr qint64 kMostBytes = 1 << 20;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? kdeAppearanceIn(file.read(kMostBytes).toStdString())
                                          : Appearance{};
}

} // namespace quillbrook
