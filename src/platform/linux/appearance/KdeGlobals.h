#pragma once

#include "platform/DesktopAppearance.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

#include <functional>

namespace quillbrook {

/// The colours in KDE's file of settings for all programs, followed through its changes. Main
/// thread only.
class KdeGlobals final : public QObject {
    Q_OBJECT

public:
    /// The file of this user.
    static QString pathOfThisUser();

    /// Calls `changed` at each change, not for what is there now.
    KdeGlobals(QString path, std::function<void()> changed);

    const Appearance& appearance() const { return told; }

private:
    void watch();
    void update();
    Appearance read() const;

    QString path;
    std::function<void()> changed;
    QFileSystemWatcher watcher{};
    Appearance told{};
};

} // namespace quillbrook
