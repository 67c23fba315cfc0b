#include "platform/qt/QtUserDefaults.h"

#include "base/OlderThread.h"
#include "base/WholeNumber.h"
#include "platform/qt/QtText.h"

#include <QFile>

namespace quillbrook {

double QtUserDefaults::doubleForKey(std::string_view key) const
{
    return settings.value(toQString(key)).toDouble();
}

void QtUserDefaults::setDouble(std::string_view key, double value)
{
    set(key, value);
}

bool QtUserDefaults::boolForKey(std::string_view key) const
{
    return settings.value(toQString(key)).toBool();
}

void QtUserDefaults::setBool(std::string_view key, bool value)
{
    set(key, value);
}

std::string QtUserDefaults::stringForKey(std::string_view key) const
{
    return settings.value(toQString(key)).toString().toStdString();
}

void QtUserDefaults::setString(std::string_view key, const std::string& value)
{
    set(key, toQString(value));
}

std::int64_t QtUserDefaults::integerForKey(std::string_view key) const
{
    const QVariant value = settings.value(toQString(key));
    bool isWhole = false;
    const qlonglong number = value.toString().toLongLong(&isWhole); // a double would be rounded
    return isWhole ? number : wholeNumber(value.toDouble());
}

void QtUserDefaults::setInteger(std::string_view key, std::int64_t value)
{
    set(key, QVariant::fromValue<qlonglong>(value));
}

std::filesystem::path QtUserDefaults::directory() const
{
    const QString file = settings.fileName();
    return std::filesystem::path(QFile::encodeName(file).toStdString()).parent_path();
}

void QtUserDefaults::set(std::string_view key, const QVariant& value)
{
    settings.setValue(toQString(key), value);
    onOlderThread([this] { settings.sync(); }); // a crash must not lose it
}

} // namespace quillbrook
