#pragma once

#include "base/Text.h"
#include "lab/JsonText.h"

#include <QByteArray>

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

namespace quillbrook::lab {

inline QByteArray json(std::int64_t value)
{
    return QByteArray::number(static_cast<qlonglong>(value));
}

/// In shortest round-trip form; null for what JSON has no number for.
inline QByteArray json(double value)
{
    return std::isfinite(value) ? QByteArray::fromStdString(shortestText(value)) : "null";
}

inline QByteArray json(const std::string& value)
{
    return jsonText(value);
}

template <typename T>
QByteArray json(const std::optional<T>& value)
{
    return value ? json(*value) : "null";
}

/// A JSON object whose members keep the order in which they are added.
class JsonObject {
public:
    template <typename T>
    JsonObject& add(const std::string& name, const T& value)
    {
        return addText(name, json(value));
    }

    /// The same for a value that is JSON text already.
    JsonObject& addText(const std::string& name, const QByteArray& value)
    {
        members += (members.isEmpty() ? "" : ",") + jsonText(name) + ":" + value;
        return *this;
    }

    QByteArray text() const { return "{" + members + "}"; }

private:
    QByteArray members{};
};

} // namespace quillbrook::lab
