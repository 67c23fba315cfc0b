#pragma once

#include "platform/DesktopExtension.h"
#include "platform/linux/bus/NameOwner.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <filesystem>
#include <functional>
#include <vector>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// What the answer to `GetExtensionInfo` tells of an extension; nothing in an answer of another
/// form.
QVariantMap extensionFactsIn(const QDBusMessage& reply);

/// Whether GNOME Shell runs our extension, and its being switched on. Main thread only.
class ShellExtensionSwitch final : public QObject, public DesktopExtension {
    Q_OBJECT

public:
    /// `folders` hold extensions, each in a folder named after it.
    ShellExtensionSwitch(Bus& sessionBus, std::vector<std::filesystem::path> folders);

    /// Where GNOME Shell looks for extensions.
    static std::vector<std::filesystem::path> standardFolders();

    State state() const override { return present; }
    void enable() override;
    void whenChanged(std::function<void()> body) override { changed = std::move(body); }

private Q_SLOTS:
    void extensionStateChanged(
        const QString& extension, const QVariantMap& facts, const QDBusMessage& signal);

private:
    void ask();
    void askWhetherAnyMayRun();
    void take(const QVariantMap& facts);
    void set(State next);
    bool isInstalled() const;
    QDBusMessage shellCall(const char* interface, const char* method) const;

    Bus& sessionBus;
    std::vector<std::filesystem::path> folders;
    std::function<void()> changed = [] {};
    State present = State::notNeeded;
    int tellings = 0; // of the extension's state
    NameOwner shell;
};

} // namespace quillbrook
