#include "pages/kit/SaveDialogue.h"

#include "base/OlderThread.h"
#include "base/PrivateFiles.h"
#include "platform/UserDefaults.h"
#include "platform/qt/QtText.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QSaveFile>

#include <string_view>

namespace quillbrook {

namespace {

constexpr std::string_view kFolderKey = "savingFolder";

void writeFile(const QString& path, const QByteArray& bytes)
{
    const UsualFileModes usual;
    onOlderThread([&] {
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) {
            file.commit();
        }
    });
}

} // namespace

void offerToSave(QWidget* window, const FileOffer& offer, UserDefaults& defaults)
{
    auto* dialog = new QFileDialog(window, offer.title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setMimeTypeFilters({offer.mimeType});
    dialog->setDefaultSuffix(offer.suffix);
    // The file is all that may be written: what would make and rename folders fails.
    dialog->setOption(QFileDialog::ReadOnly, isOlderThreadThere());
    // The toolkit keeps the folder among settings that aren't ours to write.
    const QString folder = toQString(defaults.stringForKey(kFolderKey));
    if (QFileInfo(folder).isDir()) {
        dialog->setDirectory(folder);
    }
    dialog->selectFile(offer.name);
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog,
        [bytes = offer.bytes, &defaults](const QString& path) {
            writeFile(path, bytes);
            defaults.setString(kFolderKey, QFileInfo(path).absolutePath().toStdString());
        });
    dialog->open();
}

} // namespace quillbrook
