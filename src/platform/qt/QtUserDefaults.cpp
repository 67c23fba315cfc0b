#include "platform/qt/QtUserDefaults.h"

#include "platform/qt/QtText.h"

namespace quillbrook {

double QtUserDefaults::doubleForKey(std::string_view key) const
{
    return settings.value(toQString(key)).toDouble();
}

void QtUserDefaults::setDouble(std::string_view key, double value)
{
    settings.setValue(toQString(key), value);
    settings.sync(); // a crash must not lose it
}

} // namespace quillbrook
