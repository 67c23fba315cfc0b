#pragma once

#include "platform/linux/bus/NameOwner.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>

namespace quillbrook {

class Bus;

/// The descriptions of all layouts in the answer to `getLayoutsList`; none in an answer of another
/// form.
QStringList layoutDescriptionsIn(const QDBusMessage& reply);

/// The keyboard's layout as KDE tells it on the session bus. Main thread only.
class KdeLayout final : public QObject {
    Q_OBJECT

public:
    explicit KdeLayout(Bus& sessionBus);

    /// The description of the layout in use, as "English (US)"; empty while nobody tells.
    std::optional<std::string> description() const;

private Q_SLOTS:
    void layoutChanged(uint index, const QDBusMessage& signal);
    void layoutListChanged(const QDBusMessage& signal);

private:
    void ask();
    QDBusMessage call(const char* member) const;

    Bus& sessionBus;
    QStringList descriptions{}; // of all layouts
    uint present = 0;
    NameOwner keyboard;
};

} // namespace quillbrook
