#pragma once

#include <QString>

#include <string_view>

namespace quillbrook {

/// Text of the logic, UTF-8, as Qt's.
inline QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace quillbrook
