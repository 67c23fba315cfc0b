#pragma once

#include "platform/SingleInstance.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <string>
#include <utility>

namespace quillbrook {

/// The first owns our name on the session bus.
class BusInstance final : public QObject, public SingleInstance {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Claims the name where the bus answers. Before the application object is made, and before any
    /// file is touched.
    BusInstance();
    ~BusInstance() override;

    BusInstance(const BusInstance&) = delete;
    BusInstance& operator=(const BusInstance&) = delete;

    /// The connection that claims the name; not connected where there is no bus.
    static QDBusConnection connection();

    /// Claims it, too, on a bus that was silent, or not there, before, and answers now.
    void claim();

    bool handOver() override;
    void onReopen(std::function<void(const std::string& startupId)> body) override
    {
        reopened = std::move(body);
    }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData); // NOLINT: the interface's name

private:
    void claimOn(const QString& address);

    QDBusConnection bus;
    bool hasName = false;
    std::function<void(const std::string& startupId)> reopened = [](const std::string&) {};
};

} // namespace quillbrook
