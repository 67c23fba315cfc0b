#pragma once

#include "platform/PanelItem.h"
#include "platform/linux/bus/NameOwner.h"
#include "platform/linux/bus/TrayHost.h"
#include "platform/linux/session/FrontSource.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

namespace quillbrook {

/// The window that the arguments (s application, s class, u process) of `Front` describe; empty
/// when it is none.
std::optional<FrontWindow> toldWindow(const QList<QVariant>& arguments);

/// Our extension of GNOME Shell, as it speaks with us: it tells the application in front, and shows
/// our label and menu where no tray does. Only who owns the shell's name on the bus is heard.
///
/// It calls, without an answer, `Hello`, `Front(s application, s class, u process)` with empty
/// fields when nobody is in front, `MenuOpens`, `Choose(u entry, s activation token)` and `Bye`.
/// The shell alone gets the signal `Changed(s label, b isAlert, au entries, as titles)`: when it
/// comes, at a `Hello` and at each change. A divider has an empty title. Main thread only.
class ShellExtension final : public QDBusVirtualObject, public FrontSource, public PanelItem {
    Q_OBJECT

public:
    /// `bus` is the connection that owns the program's name.
    explicit ShellExtension(const QDBusConnection& bus);
    ~ShellExtension() override;

    ShellExtension(const ShellExtension&) = delete;
    ShellExtension& operator=(const ShellExtension&) = delete;

    /// `body` runs after each change of the front, or of who knows it.
    void whenFrontChanges(std::function<void()> body) { frontChanged = std::move(body); }

    bool isThere() const override { return hasTold; }
    std::optional<FrontWindow> front() const override { return window; }

    void show(const PanelItemContent& content) override;
    void setHandlers(Handlers panelHandlers) override { handlers = std::move(panelHandlers); }
    void followTray(std::function<void(bool)> body) override;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;

private:
    bool isFromShell(const QDBusMessage& call);
    void handle(const QString& member, const QList<QVariant>& arguments);
    void setFront(bool isTold, std::optional<FrontWindow> next);
    void send();

    QDBusConnection bus;
    std::function<void()> frontChanged = [] {};
    Handlers handlers{};
    PanelItemContent content{};
    bool hasTold = false;
    bool isPoserTold = false;
    std::optional<FrontWindow> window{};
    NameOwner shell;
    TrayHost tray;
    std::function<void(bool)> trayChanged{};
};

} // namespace quillbrook
