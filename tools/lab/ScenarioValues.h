#pragma once

#include <QJsonValue>
#include <QString>

namespace quillbrook::lab {

/// Whether a script's header may hold `name`.
bool isHeaderMember(const QString& name);

/// Whether a line behind the header may hold `name`.
bool isEvent(const QString& name);

/// Whether `value` is of the form that the header member or event `name` takes.
bool hasRightForm(const QString& name, const QJsonValue& value);

} // namespace quillbrook::lab
