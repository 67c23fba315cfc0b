#pragma once

#include "platform/linux/session/FrontSource.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <utility>

namespace quillbrook {

/// The window that a shell reports so; empty when it says nothing of it.
std::optional<FrontWindow> reportedWindow(
    const QString& id, const QString& windowClass, const QString& instance, int process);

/// The window in front as a part of the desktop's own shell reports it to an object of ours on the
/// session bus. Heard is only who owns the shell's name: whoever else calls is refused, which
/// is one notice. Main thread only.
class ReportedFront final : public QObject, public FrontSource, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "cn.tarnlow.quillbrook.Front")

public:
    static constexpr const char* kPath = "/cn/tarnlow/quillbrook/front";
    static constexpr const char* kInterface = "cn.tarnlow.quillbrook.Front";

    /// `changed` runs after each change.
    explicit ReportedFront(std::function<void()> changed) : changed(std::move(changed)) {}

    /// Hears on a bus the reports of `reporter`, by its unique name there.
    void listen(QDBusConnection bus, const QString& reporter);

    /// Nobody reports any more.
    void forget();

    bool isThere() const override { return hasReported; }
    std::optional<FrontWindow> front() const override { return window; }

public Q_SLOTS:
    /// A window came to the front: the id of its application or desktop entry, its class and
    /// instance, and its process, 0 where it isn't known. Without any of them none is in front.
    Q_SCRIPTABLE void windowActivated(
        const QString& id, const QString& windowClass, const QString& instance, int process);

private:
    std::function<void()> changed;
    QString owner{}; // of the name of the shell
    bool hasReported = false;
    bool isStrangerTold = false;
    std::optional<FrontWindow> window{};
};

} // namespace quillbrook
