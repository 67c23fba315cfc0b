#include "lab/ReplayCommand.h"

#include "engine/MonitorEngine.h"
#include "lab/Arguments.h"
#include "lab/CallLines.h"
#include "lab/Scenario.h"
#include "platform/virtual/VirtualMachine.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <map>
#include <memory>
#include <optional>

namespace quillbrook::lab {

namespace {

constexpr std::string_view kUsage
    = R"(usage: quillbrook-lab replay SCENARIO.jsonl --data DIR [--calls FILE] [--defaults FILE]

Drives the engine through a script on a virtual machine with a virtual clock. The engine writes
its store, log and pid file into DIR; its standard output is the only output.

  --data DIR       the data directory, made when missing
  --calls FILE     receives a JSON line for each call that reaches outside
  --defaults FILE  receives the user defaults at the end, a JSON object
)";

constexpr double kDefaultClock = 1767225600;
constexpr double kUptimeBeforeStartSec = 3600;

double startOf(const Scenario& scenario)
{
    return scenario.header["clock"].toDouble(kDefaultClock);
}

std::optional<std::string> optionalText(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString().toStdString()) : std::nullopt;
}

WorkspaceNotification notificationNamed(const QString& name)
{
    static const std::map<QString, WorkspaceNotification> kNotifications = {
        {"screensDidSleep", WorkspaceNotification::screensDidSleep},
        {"screensDidWake", WorkspaceNotification::screensDidWake},
        {"willSleep", WorkspaceNotification::willSleep},
        {"didWake", WorkspaceNotification::didWake},
    };
    return kNotifications.at(name);
}

/// A script under way: the machine, and the engine while there is one.
class Replay {
public:
    Replay(const Scenario& scenario, const std::string& dataDirectory)
        : scenario(scenario)
        , startedAt(startOf(scenario))
        , machine(dataDirectory, startedAt)
    {
        machine.kernelFigures.setBootTime(
            static_cast<std::int64_t>(std::floor(startedAt - kUptimeBeforeStartSec)));
        machine.workspace.setProcessIdentifier(scenario.header["pid"].toInteger(4242));
        setDefaults(scenario.header["defaults"].toObject());
        for (const QString& name : scenario.header.keys()) {
            change(name, scenario.header[name]);
        }
    }

    void run()
    {
        for (const ScenarioEvent& event : scenario.events) {
            machine.mainLoop.runBefore(startedAt + event.at);
            if (event.name == "suspend") {
                machine.mainLoop.jumpTo(startedAt + (event.at + event.value.toDouble()));
            } else {
                happen(event.name, event.value);
            }
        }
        endProcess();
    }

    /// The user defaults of the header with what the engine wrote.
    QJsonObject defaults() const
    {
        QJsonObject object = scenario.header["defaults"].toObject();
        for (const auto& [key, value] : machine.userDefaults.all()) {
            const QString name = QString::fromStdString(key);
            if (const auto* flag = std::get_if<bool>(&value)) {
                object[name] = *flag;
            } else if (const auto* number = std::get_if<double>(&value)) {
                object[name] = *number;
            } else {
                object[name] = QString::fromStdString(std::get<std::string>(value));
            }
        }
        return object;
    }

    QByteArray calls() const { return callLines(machine.calls.all()); }

private:
    void setDefaults(const QJsonObject& values)
    {
        for (const QString& name : values.keys()) {
            const QJsonValue value = values[name];
            const std::string key = name.toStdString();
            if (value.isBool()) {
                machine.userDefaults.set(key, value.toBool());
            } else if (value.isDouble()) {
                machine.userDefaults.set(key, value.toDouble());
            } else if (value.isString()) {
                machine.userDefaults.set(key, value.toString().toStdString());
            }
        }
    }

    /// Gives a setting of the machine a new value.
    void change(const QString& name, const QJsonValue& value)
    {
        static const std::map<QString, void (Replay::*)(const QJsonValue&)> kSetters = {
            {"bootTime", &Replay::setBootTime},
            {"trusted", &Replay::setTrusted},
            {"monitor", &Replay::setMonitor},
            {"tap", &Replay::setTap},
            {"inputSource", &Replay::setInputSource},
            {"instances", &Replay::setInstances},
            {"front", &Replay::setFront},
            {"tccutil", &Replay::setTccutil},
            {"osascript", &Replay::setOsascript},
            {"load", &Replay::setLoad},
            {"cpuTicks", &Replay::setCpuTicks},
            {"memory", &Replay::setMemory},
            {"swap", &Replay::setSwap},
            {"processBytes", &Replay::setProcessBytes},
            {"windowServer", &Replay::setWindowServer},
        };
        if (const auto setter = kSetters.find(name); setter != kSetters.end()) {
            (this->*setter->second)(value);
        }
    }

    void setBootTime(const QJsonValue& value)
    {
        machine.kernelFigures.setBootTime(
            value.isNull() ? std::nullopt : std::optional<std::int64_t>(value.toInteger()));
    }

    void setTrusted(const QJsonValue& value) { machine.accessibility.setTrusted(value.toBool()); }
    void setMonitor(const QJsonValue& value)
    {
        machine.keyCounting.setGivesMonitors(value == "ok");
    }
    void setTap(const QJsonValue& value) { machine.keyCounting.setGivesTaps(value == "ok"); }
    void setInputSource(const QJsonValue& value)
    {
        machine.inputSource.choose(optionalText(value));
    }
    void setInstances(const QJsonValue& value) { machine.workspace.setInstances(value.toInt()); }

    void setTool(const std::string& path, const QJsonValue& exitStatus)
    {
        if (exitStatus.isString()) {
            machine.childProcess.uninstall(path);
        } else {
            machine.childProcess.install(path, {.exitStatus = exitStatus.toInt()});
        }
    }

    void setTccutil(const QJsonValue& value) { setTool("/usr/bin/tccutil", value); }
    void setOsascript(const QJsonValue& value) { setTool("/usr/bin/osascript", value); }

    void setWindowServer(const QJsonValue& value)
    {
        if (value.isNull()) {
            machine.childProcess.uninstall("/bin/bash");
        } else {
            machine.childProcess.install(
                "/bin/bash", {.standardOutput = value.toString().toStdString()});
        }
    }

    void setLoad(const QJsonValue& value)
    {
        machine.kernelFigures.setLoadAverages(
            {value[0].toDouble(), value[1].toDouble(), value[2].toDouble()});
    }

    void setCpuTicks(const QJsonValue& value)
    {
        machine.kernelFigures.setCpuTicks(value.isNull()
                ? std::nullopt
                : std::optional(CpuTicks{value[0].toDouble(), value[1].toDouble(),
                    value[2].toDouble(), value[3].toDouble()}));
    }

    void setMemory(const QJsonValue& value)
    {
        machine.kernelFigures.setMemory(value.isNull()
                ? std::nullopt
                : std::optional(MemoryFigures{.activePages = value["active"].toDouble(),
                    .wiredPages = value["wired"].toDouble(),
                    .compressorPages = value["compressor"].toDouble(),
                    .pageSize = value["pageSize"].toDouble(),
                    .physicalBytes = value["physical"].toDouble()}));
    }

    void setSwap(const QJsonValue& value)
    {
        machine.kernelFigures.setSwap(value.isNull()
                ? std::nullopt
                : std::optional(SwapFigures{.totalBytes = value["total"].toDouble(),
                    .usedBytes = value["used"].toDouble()}));
    }

    void setProcessBytes(const QJsonValue& value)
    {
        machine.kernelFigures.setProcessTableBytes(value.toDouble());
    }

    void setFront(const QJsonValue& value)
    {
        if (value.isNull()) {
            machine.workspace.setFront(std::nullopt);
        } else {
            machine.workspace.setFront(
                RunningApplication{.localizedName = optionalText(value["name"]),
                    .bundleIdentifier = optionalText(value["bundle"])});
        }
    }

    void happen(const QString& name, const QJsonValue& value)
    {
        if (name == "engine") {
            callEngine(value.toString());
        } else if (name == "input") {
            machine.humanInput.happenAgo(value.toDouble());
        } else if (name == "keys") {
            machine.humanInput.happenNow();
            machine.keyCounting.press(value.toInteger());
        } else if (name == "notify") {
            machine.workspace.notify(notificationNamed(value.toString()));
        } else {
            change(name, value);
        }
    }

    void callEngine(const QString& call)
    {
        if (call == "start") {
            if (!engine) {
                engine = std::make_unique<MonitorEngine>(machine.platform());
            }
            engine->start();
            return;
        }
        if (engine && call == "stop") {
            engine->stop();
        }
        endProcess();
    }

    void endProcess()
    {
        engine.reset();
        machine.endProcess();
    }

    const Scenario& scenario;
    double startedAt;
    VirtualMachine machine;
    std::unique_ptr<MonitorEngine> engine{};
};

/// A file for results, opened before anything runs. What it held stays until it is written.
class ResultFile {
public:
    ResultFile(const Arguments& arguments, std::string_view option)
    {
        const auto path = arguments.option(option);
        if (!path) {
            return;
        }
        file.setFileName(QString::fromStdString(*path));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
            arguments.reject(option, file.errorString().toStdString());
        }
    }

    void write(const QByteArray& text)
    {
        if (file.isOpen()) {
            file.resize(0);
            file.write(text);
        }
    }

private:
    QFile file{};
};

/// Ends the program with a usage error where there is no script, or one that has a fault.
Scenario readScenario(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        usageError(path, 0, file.errorString().toStdString());
    }
    auto read = scenarioIn(file.readAll());
    if (const auto* fault = std::get_if<ScenarioFault>(&read)) {
        usageError(path, fault->line, fault->what);
    }
    return *std::get_if<Scenario>(&read);
}

} // namespace

int replayCommand(const std::vector<std::string>& texts)
{
    const Arguments arguments({.usage = kUsage,
                                  .options = {"--data", "--calls", "--defaults"},
                                  .required = {"--data"},
                                  .positionals = 1},
        texts);
    const Scenario scenario = readScenario(arguments.positional(0));
    ResultFile calls(arguments, "--calls");
    ResultFile defaults(arguments, "--defaults");

    Replay replay(scenario, arguments.required("--data"));
    replay.run();
    calls.write(replay.calls());
    defaults.write(QJsonDocument(replay.defaults()).toJson(QJsonDocument::Compact) + '\n');
    return 0;
}

} // namespace quillbrook::lab
