#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <string>
#include <vector>

namespace quillbrook::lab {

/// One thing that happens in a script.
struct ScenarioEvent {
    double at = 0; // seconds after the script's clock
    QString name{};
    QJsonValue value{};
};

/// A script: how the machine is at the beginning, and what happens, in order. The last event is
/// always "end".
struct Scenario {
    QJsonObject header{};
    std::vector<ScenarioEvent> events{};
};

/// Reads and checks a whole script; ends the program with a usage error at its first fault.
Scenario readScenario(const std::string& path);

} // namespace quillbrook::lab
