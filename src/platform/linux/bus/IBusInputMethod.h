#pragma once

#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QVariant>

#include <optional>
#include <string>

namespace quillbrook {

class MainLoop;
class WorkQueues;

/// The engine's name in the value of the property `GlobalEngine`; empty in one of another form.
QString ibusEngineIn(const QVariant& property);

/// What IBus says of the input method in use. Its daemon keeps a bus of its own, whose address it
/// leaves in a file for each display, and tells of each change. Main thread only.
class IBusInputMethod final : public QObject {
    Q_OBJECT

public:
    IBusInputMethod(MainLoop& mainLoop, WorkQueues& workQueues);
    ~IBusInputMethod() override;

    /// The identifier of the engine in use; empty when IBus doesn't run or doesn't tell.
    std::optional<std::string> identifier() const;

    /// Looks for a daemon that started meanwhile.
    void refresh();

private Q_SLOTS:
    void globalEngineChanged(const QString& engine);

private:
    void connectToDaemon();
    void attemptEnded();
    void askForEngine();
    void setEngine(const QString& engine);
    void askForDoublePinyin();

    MainLoop& mainLoop;
    WorkQueues& workQueues;
    QFileSystemWatcher watcher{};
    QString connectionName{};
    QString connectedAddress{};
    int attempts = 0;
    QElapsedTimer lastAttempt{};
    QString current{}; // the engine's name
    bool isDoublePinyin = false;
};

} // namespace quillbrook
