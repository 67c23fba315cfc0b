#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <functional>

namespace quillbrook {

/// One running program for each user session: the first owns our name on the session bus, and a
/// later one asks it to show itself. Main thread only.
class SingleInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Claims the name. Before the application object is made, and before any file is touched.
    SingleInstance();
    ~SingleInstance() override;

    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Asks the instance that has the name to show itself. False when there is none, or none that
    /// answers: then this one runs on.
    bool handOver() const;

    /// Calls `reopened` each time a later instance hands over.
    void onReopen(std::function<void()> body) { reopened = std::move(body); }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData); // NOLINT: the interface's name

private:
    QDBusConnection bus;
    bool hasName = false;
    std::function<void()> reopened = [] {};
};

} // namespace quillbrook
