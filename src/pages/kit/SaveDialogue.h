#pragma once

#include <QByteArray>
#include <QString>

class QWidget;

namespace quillbrook {

class UserDefaults;

/// A file that a person may want.
struct FileOffer {
    QString title{}; // of the dialogue
    QString mimeType{};
    QString suffix{}; // for a name without one
    QString name{};
    QByteArray bytes{};
};

/// Asks in a dialogue of `window` where the file shall be, and writes it there as a whole or not at
/// all; a failure has no effect. Returns at once. The dialogue begins in the folder of the last
/// time, which `defaults` keeps.
void offerToSave(QWidget* window, const FileOffer& offer, UserDefaults& defaults);

} // namespace quillbrook
