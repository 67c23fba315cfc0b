#pragma once

#include "platform/linux/shells/ReportedFront.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QTemporaryFile>

#include <functional>
#include <map>
#include <memory>

namespace quillbrook {

class Bus;

/// Speaks with KWin by scripts that are loaded over the session bus, so that nothing needs to be
/// installed: one lets it report each window that comes to the front, another brings ours there. A
/// KWin that starts later, or again, is spoken with, too. Main thread only.
class KWinScript final : public QObject {
    Q_OBJECT

public:
    /// `changed` runs after each change of the window in front.
    KWinScript(Bus& sessionBus, std::function<void()> changed);
    ~KWinScript() override;

    KWinScript(const KWinScript&) = delete;
    KWinScript& operator=(const KWinScript&) = delete;

    const FrontSource& front() const { return reports; }

    /// Asks KWin to show the windows of this process. False where KWin isn't there.
    bool focusOwnWindow();

private:
    void setUp(const QDBusConnection& bus);
    void ownerChanged(const QString& owner);
    void run(const QString& name, const QString& text);
    bool keep(const QString& name, const QString& text);
    void load(const QString& name);
    QDBusMessage call(const char* member, const QVariantList& arguments = {}) const;

    Bus& sessionBus;
    ReportedFront reports;
    QDBusServiceWatcher watcher{};
    bool isThere = false;
    // By the names of their scripts; made, replaced and removed on the older thread.
    std::map<QString, std::unique_ptr<QTemporaryFile>> files{};
};

} // namespace quillbrook
