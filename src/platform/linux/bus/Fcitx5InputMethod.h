#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QObject>
#include <QString>

#include <optional>
#include <string>

namespace quillbrook {

class Bus;

/// How Fcitx 5 calls an input method.
struct Fcitx5Names {
    QString name{};
    QString nativeName{};
};

/// The names of all input methods by their ids, in the answer to `AvailableInputMethods`; none in
/// an answer of another form.
QMap<QString, Fcitx5Names> fcitx5NamesIn(const QDBusMessage& reply);

/// What Fcitx 5 says of the input method in use. It tells of no change by itself, so it has to be
/// asked, without waiting; it is never started by that. Main thread only.
class Fcitx5InputMethod final : public QObject {
    Q_OBJECT

public:
    explicit Fcitx5InputMethod(Bus& sessionBus);

    bool isRunning() const { return running; }

    /// Asks for the input method in use; the answer comes a moment later.
    void refresh();

    /// The identifier as of the last answer; empty while there was none, and when Fcitx 5 doesn't
    /// run.
    std::optional<std::string> identifier() const;

private:
    void setUp(const QDBusConnection& bus);
    void came();
    void went();
    void askForNames();
    void askForSchema();

    Bus& sessionBus;
    QDBusServiceWatcher watcher{};
    bool running = false;
    QString current{}; // its id
    QString schema{}; // of Rime
    QMap<QString, Fcitx5Names> names{};
};

} // namespace quillbrook
