#include "lab/Scenario.h"

#include "lab/Arguments.h"
#include "lab/ScenarioValues.h"

#include <QByteArray>
#include <QFile>
#include <QJsonDocument>
#include <QJsonParseError>

namespace quillbrook::lab {

namespace {

/// Reads the lines of one script and knows where it is.
class ScenarioReader {
public:
    explicit ScenarioReader(const std::string& path) : path(path)
    {
        QFile file(QString::fromStdString(path));
        if (!file.open(QIODevice::ReadOnly)) {
            usageError(path, 0, file.errorString().toStdString());
        }
        lines = file.readAll().split('\n');
        if (lines.last().isEmpty()) {
            lines.removeLast(); // behind the last line break
        }
    }

    Scenario read()
    {
        Scenario scenario{.header = readHeader()};
        while (number < lines.size()) {
            if (!scenario.events.empty() && scenario.events.back().name == "end") {
                ++number;
                fail("a line behind the end");
            }
            scenario.events.push_back(readEvent());
        }
        if (scenario.events.empty() || scenario.events.back().name != "end") {
            scenario.events.push_back({.at = earliest, .name = "end", .value = true});
        }
        return scenario;
    }

private:
    [[noreturn]] void fail(const QString& what) const
    {
        usageError(path, static_cast<std::size_t>(number), what.toStdString());
    }

    QJsonObject readObject()
    {
        const QByteArray line = number < lines.size() ? lines[number] : QByteArray();
        ++number;
        QJsonParseError fault;
        const QJsonDocument document = QJsonDocument::fromJson(line, &fault);
        if (fault.error != QJsonParseError::NoError) {
            fail(fault.errorString());
        }
        if (!document.isObject()) {
            fail("not a JSON object");
        }
        return document.object();
    }

    void check(const QString& name, const QJsonValue& value) const
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
        }
        const double at = line.take("at").toDouble();
        if (!(at >= earliest)) {
            fail("'at' is before what came earlier");
        }
        if (line.size() != 1) {
            fail(line.isEmpty() ? "no event" : "more than one event");
        }
        const QString name = line.keys().first();
        const QJsonValue value = line[name];
        if (!isEvent(name)) {
            fail("unknown event '" + name + "'");
        }
        check(name, value);
        earliest = name == "suspend" ? at + value.toDouble() : at;
        return {.at = at, .name = name, .value = value};
    }

    std::string path;
    QList<QByteArray> lines{};
    qsizetype number = 0; // of the line read last, from 1
    double earliest = 0; // the next event's least time
};

} // namespace

Scenario readScenario(const std::string& path)
{
    return ScenarioReader(path).read();
}

} // namespace quillbrook::lab
