#pragma once

#include <QByteArray>
#include <QMetaType>

class QDBusArgument;
class QImage;

namespace quillbrook {

/// A picture as notification services take it.
struct NotificationIcon {
    int width = 0;
    int height = 0;
    QByteArray pixels{}; // red, green, blue and opacity, a byte each, row by row from the top
};

NotificationIcon notificationIcon(const QImage& picture);

QDBusArgument& operator<<(QDBusArgument& argument, const NotificationIcon& icon);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotificationIcon& icon);

} // namespace quillbrook

Q_DECLARE_METATYPE(quillbrook::NotificationIcon)
