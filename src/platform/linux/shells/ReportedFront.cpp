#include "platform/linux/shells/ReportedFront.h"

#include "base/Text.h"
#include "platform/linux/words/Notice.h"

#include <QDBusMessage>

#include <utility>

namespace quillbrook {

namespace {

constexpr int kMostCharacters = 4096;

std::string textOf(const QString& text)
{
    return validUtf8(text.left(kMostCharacters).toStdString());
}

} // namespace

std::optional<FrontWindow> reportedWindow(
    const QString& id, const QString& windowClass, const QString& instance, int process)
{
    if (id.isEmpty() && windowClass.isEmpty() && process <= 0) {
        return std::nullopt;
    }
    return FrontWindow{.traits = {.instance = textOf(instance),
                           .className = textOf(windowClass),
                           .applicationId = textOf(id)},
        .process = process};
}

void ReportedFront::listen(QDBusConnection bus, const QString& reporter)
{
    owner = reporter;
    bus.registerObject(QString::fromLatin1(kPath), this, QDBusConnection::ExportScriptableSlots);
}

void ReportedFront::forget()
{
    owner.clear();
    hasReported = false;
    window.reset();
    changed();
}

void ReportedFront::windowActivated(
    const QString& id, const QString& windowClass, const QString& instance, int process)
{
    if (owner.isEmpty() || message().service() != owner) {
        if (!std::exchange(isStrangerTold, true)) {
            notice("有程序冒充桌面报告前台应用，不予理会");
        }
        sendErrorReply(QDBusError::AccessDenied);
        return;
    }
    hasReported = true;
    window = reportedWindow(id, windowClass, instance, process);
    changed();
}

} // namespace quillbrook
