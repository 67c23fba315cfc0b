#include "platform/qt/QtLocaleText.h"

#include "platform/qt/QtText.h"

namespace quillbrook {

bool QtLocaleText::containsIgnoringCase(std::string_view text, std::string_view part) const
{
    return toQString(text).contains(toQString(part), Qt::CaseInsensitive);
}

} // namespace quillbrook
