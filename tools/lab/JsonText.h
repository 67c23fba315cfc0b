#pragma once

#include <QByteArray>

#include <string>
#include <vector>

namespace quillbrook::lab {

/// A text, a list of texts and a truth as JSON, escaped no further than JSON demands.
QByteArray jsonText(const std::string& text);
QByteArray jsonArray(const std::vector<std::string>& texts);
QByteArray jsonBool(bool value);

} // namespace quillbrook::lab
