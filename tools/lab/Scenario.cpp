#include "lab/Scenario.h"

#include "lab/ScenarioValues.h"

#include <QJsonDocument>
#include <QJsonParseError>

#include <cmath>
#include <optional>
#include <utility>

namespace quillbrook::lab {

namespace {

/// Reads the lines of one script and knows where it is. Once there is a fault, what is read means
/// nothing.
class ScenarioReader {
public:
    explicit ScenarioReader(const QByteArray& text) : lines(text.split('\n'))
    {
        if (lines.last().isEmpty()) {
            lines.removeLast(); // behind the last line break
        }
    }

    std::variant<Scenario, ScenarioFault> read()
    {
        Scenario scenario{.header = readHeader()};
        while (!fault && number < lines.size()) {
            if (!scenario.events.empty() && scenario.events.back().name == "end") {
                ++number;
                fail("a line behind the end");
            } else {
                scenario.events.push_back(readEvent());
            }
        }
        if (fault) {
            return *std::move(fault);
        }
        if (scenario.events.empty() || scenario.events.back().name != "end") {
            scenario.events.push_back({.at = earliest, .name = "end", .value = true});
        }
        return scenario;
    }

private:
    /// The first one counts. It is told in one line, whatever it cites.
    void fail(const QString& what)
    {
        if (!fault) {
            fault = {
                .line = static_cast<std::size_t>(number), .what = what.simplified().toStdString()};
        }
    }

    QJsonObject readObject()
    {
        const QByteArray line = number < lines.size() ? lines[number] : QByteArray();
        ++number;
        QJsonParseError parsing;
        const QJsonDocument document = QJsonDocument::fromJson(line, &parsing);
        if (parsing.error != QJsonParseError::NoError) {
            fail(parsing.errorString());
        } else if (!document.isObject()) {
            fail("not a JSON object");
        }
        return document.object();
    }

    void check(const QString& name, const QJsonValue& value)
    {
        if (!hasRightForm(name, value)) {
            fail("wrong value for '" + name + "'");
        }
    }

    QJsonObject readHeader()
    {
        QJsonObject header = readObject();
        for (const QString& name : header.keys()) {
            if (!isHeaderMember(name)) {
                fail("unknown header member '" + name + "'");
            }
            check(name, header[name]);
        }
        return header;
    }

    ScenarioEvent readEvent()
    {
        QJsonObject line = readObject();
        if (!line["at"].isDouble()) {
            fail("no time 'at'");
            return {};
        }
        const double at = line.take("at").toDouble();
        if (!(at >= earliest)) {
            fail("'at' is before what came earlier");
        }
        if (line.size() != 1) {
            fail(line.isEmpty() ? "no event" : "more than one event");
            return {};
        }
        const QString name = line.keys().first();
        const QJsonValue value = line[name];
        if (!isEvent(name)) {
            fail("unknown event '" + name + "'");
        }
        check(name, value);
        earliest = name == "suspend" ? at + value.toDouble() : at;
        if (!std::isfinite(earliest)) {
            fail("it never comes to an end");
        }
        return {.at = at, .name = name, .value = value};
    }

    QList<QByteArray> lines;
    qsizetype number = 0; // of the line read last, from 1
    double earliest = 0; // the next event's least time
    std::optional<ScenarioFault> fault{};
};

} // namespace

std::variant<Scenario, ScenarioFault> scenarioIn(const QByteArray& text)
{
    return ScenarioReader(text).read();
}

} // namespace quillbrook::lab
