#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstddef>
#include <string>
#include <variant>
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

/// Why a text is no script.
struct ScenarioFault {
    std::size_t line = 0; // from 1
    std::string what{};
};

/// The script that a text is, checked as a whole, or its first fault.
std::variant<Scenario, ScenarioFault> scenarioIn(const QByteArray& text);

} // namespace quillbrook::lab
