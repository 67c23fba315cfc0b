#include "platform/qt/QtDirectories.h"

#include <QFile>
#include <QStandardPaths>

namespace quillbrook {

std::optional<std::filesystem::path> QtDirectories::dataDirectory() const
{
    const QString support = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (support.isEmpty()) {
        return std::nullopt;
    }
    return std::filesystem::path(QFile::encodeName(support).toStdString()) / kDataFolderName;
}

} // namespace quillbrook
