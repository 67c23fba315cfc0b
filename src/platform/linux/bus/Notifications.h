#pragma once

#include "base/Lifetime.h"
#include "platform/linux/bus/NotificationIcon.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

class Bus;

/// The texts of one notification.
struct NotificationTexts {
    std::string title{};
    std::string body{};

    bool operator==(const NotificationTexts&) const = default;
};

/// The texts in `display notification "BODY" with title "TITLE"`; empty when `script` isn't such.
std::optional<NotificationTexts> notificationIn(std::string_view script);

/// `text` for services that take markup in a body: what would be markup is shown as it stands.
std::string withoutMarkup(std::string_view text);

/// The desktop's notification service. Main thread only.
class Notifications final : public QObject {
    Q_OBJECT

public:
    explicit Notifications(Bus& sessionBus);

    /// Shows `newIcon` beside all notifications from now on.
    void setIcon(const NotificationIcon& newIcon) { icon = newIcon; }

    using FailureHandler = std::function<void(const std::string& description)>;

    /// Shows a notification and doesn't wait; a service that the bus can start is started. Without
    /// a bus, and when the service is missing, refuses or doesn't answer, `failed` runs, unless we
    /// are gone by then.
    void notify(const NotificationTexts& texts, FailureHandler failed);

private:
    void send(const NotificationTexts& texts, FailureHandler failed);

    Bus& sessionBus;
    NotificationIcon icon{};

    Lifetime lifetime{};
};

} // namespace quillbrook
