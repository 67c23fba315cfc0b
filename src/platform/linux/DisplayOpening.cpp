#include "platform/linux/DisplayOpening.h"

#include "platform/linux/words/Notice.h"
#include "platform/linux/words/OutsideName.h"

#include <QString>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace quillbrook {

namespace {

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
    // What came first is why; the rest tells of the attempts that followed.
    const std::string reason
        = heldMessages().empty() ? outsideName(text.toStdString()) : heldMessages().front();
    notice("没有可用的显示，无法启动，什么都不记录: " + reason);
    std::_Exit(EXIT_FAILURE);
}

} // namespace

DisplayOpening::DisplayOpening() : handlerBefore(qInstallMessageHandler(hold)) {}

DisplayOpening::~DisplayOpening()
{
    qInstallMessageHandler(handlerBefore);
    for (const std::string& message : std::exchange(heldMessages(), {})) {
        notice(message);
    }
}

} // namespace quillbrook
