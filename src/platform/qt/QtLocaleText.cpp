#include "platform/qt/QtLocaleText.h"

#include "platform/qt/QtText.h"

#include <QLocale>

namespace quillbrook {

bool QtLocaleText::containsIgnoringCase(std::string_view text, std::string_view part) const
{
    return toQString(text).contains(toQString(part), Qt::CaseInsensitive);
}

std::string QtLocaleText::groupedNumber(std::int64_t number) const
{
    return QLocale::system().toString(static_cast<qlonglong>(number)).toStdString();
}

} // namespace quillbrook
