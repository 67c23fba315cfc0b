#pragma once

#include <QObject>

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
    explicit Notifications(Bus& sessionBus) : sessionBus(sessionBus) {}

    /// Whether there is a bus to send over.
    bool isPossible() const;

    /// Shows a notification and doesn't wait. A service that is missing or refuses is a notice.
    void notify(const NotificationTexts& texts);

private:
    Bus& sessionBus;
};

} // namespace quillbrook
