#include "lab/JsonText.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace quillbrook::lab {

QByteArray jsonArray(const std::vector<std::string>& texts)
{
    QJsonArray array;
    for (const std::string& text : texts) {
        array.append(QString::fromStdString(text));
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QByteArray jsonText(const std::string& text)
{
    const QByteArray list = jsonArray({text});
    return list.mid(1, list.size() - 2);
}

QByteArray jsonBool(bool value)
{
    return value ? "true" : "false";
}

} // namespace quillbrook::lab
