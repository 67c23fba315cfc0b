#include "platform/linux/DisplayOpening.h"

#include "platform/linux/LinuxConfinement.h"
#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"

#include <QString>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

namespace {

HeldErrors* heldErrors = nullptr;

std::vector<std::string>& heldMessages()
{
    static std::vector<std::string> messages;
    return messages;
}

void hold(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtFatalMsg) {
        heldMessages().push_back(outsideName(text.toStdString()));
        return;
    }
    // What came first is why; the rest tells of the attempts that followed. A library below may
    // know more: what a server says that lets nobody in.
    const std::string reason
        = heldMessages().empty() ? outsideName(text.toStdString()) : heldMessages().front();
    const std::string libraryWords = outsideName(heldErrors->take());
    notice("没有可用的显示，无法启动，什么都不记录: " + reason
        + (libraryWords.empty() ? "" : "（" + libraryWords + "）"));
    leaveNoEmptyDirectory();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

DisplayOpening::DisplayOpening() : handlerBefore(qInstallMessageHandler(hold))
{
    heldErrors = &errors;
}

DisplayOpening::~DisplayOpening()
{
    qInstallMessageHandler(handlerBefore);
    heldErrors = nullptr;
    for (const std::string& message : std::exchange(heldMessages(), {})) {
        notice(message);
    }
}

} // namespace quillbrook
