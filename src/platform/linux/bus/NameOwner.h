#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <functional>

namespace quillbrook {

class Bus;

/// Who owns a name on a bus, followed through its changes. Main thread only.
class NameOwner final : public QObject {
    Q_OBJECT

public:
    /// `changed` runs when another or nobody owns the name, and when that is known first.
    NameOwner(QString name, std::function<void()> changed);

    NameOwner(const NameOwner&) = delete;
    NameOwner& operator=(const NameOwner&) = delete;

    /// Looks at this connection from now on.
    void follow(const QDBusConnection& bus);

    /// Looks at the bus each time that it is there.
    void follow(Bus& bus);

    /// Whether the bus has told yet.
    bool isKnown() const { return known; }

    /// The owner's own name on the bus; empty when there is none.
    const QString& owner() const { return present; }

private:
    void set(const QString& owner);

    QString name;
    std::function<void()> changed;
    QDBusServiceWatcher watcher{};
    QString present{};
    bool known = false;
    int tellings = 0; // of the bus, asked or not
};

} // namespace quillbrook
