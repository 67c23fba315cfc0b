#include "platform/qt/QtLocaleText.h"

#include "platform/qt/QtText.h"

#include <QCollator>
#include <QLocale>

namespace quillbrook {

namespace {

QCollator caselessCollator()
{
    QCollator collator(QLocale::system().collation());
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace

bool QtLocaleText::containsIgnoringCase(std::string_view text, std::string_view part) const
{
    return toQString(text).contains(toQString(part), Qt::CaseInsensitive);
}

int QtLocaleText::compareIgnoringCase(std::string_view left, std::string_view right) const
{
    // Slow to make, and at its first use it changes inside, so that threads can't share it.
    thread_local const QCollator collator = caselessCollator();
    return collator.compare(toQString(left), toQString(right));
}

std::string QtLocaleText::groupedNumber(std::int64_t number) const
{
    return QLocale::system().toString(static_cast<qlonglong>(number)).toStdString();
}

} // namespace quillbrook
