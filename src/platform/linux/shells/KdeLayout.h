#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
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
    void layoutChanged(unsigned int index) { present = index; }
    void layoutListChanged() { ask(); }

private:
    void setUp(QDBusConnection bus);
    void ask();
    QDBusMessage call(const char* member) const;

    Bus& sessionBus;
    QDBusServiceWatcher watcher{};
    QStringList descriptions{}; // of all layouts
    unsigned int present = 0;
};

} // namespace quillbrook
