#pragma once

#include "platform/linux/bus/NameOwner.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace quillbrook {

/// Whether anybody on the session bus shows the icons that programs register: the service that
/// gathers them may be there without one who shows them. Main thread only.
class TrayHost final : public QObject {
    Q_OBJECT

public:
    /// `changed` runs when somebody comes or the last one goes, and when that is known first.
    explicit TrayHost(std::function<void()> changed);

    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;

    /// Looks at this connection from now on.
    void follow(const QDBusConnection& connection);

    /// Whether the bus has told yet.
    bool isKnown() const { return known; }

    bool isThere() const { return present; }

private Q_SLOTS:
    void ask();

private:
    void set(bool isThere);

    std::function<void()> changed;
    QDBusConnection bus;
    bool known = false;
    bool present = false;
    int questions = 0;
    NameOwner watcher;
};

} // namespace quillbrook
