#pragma once

#include "platform/PermissionGuide.h"

#include <QObject>

#include <string>

class QDBusMessage;

namespace quillbrook {

class Bus;

/// Where no program can count keys, a service of the system does. This has the system bus start it,
/// and the desktop's file manager show the program. Main thread only.
class BusPermissionGuide final : public QObject, public PermissionGuide {
public:
    /// `counterService` is the service's name on the system bus, `program` the absolute path of the
    /// program's file.
    BusPermissionGuide(const Bus& sessionBus, const Bus& systemBus, std::string counterService,
        std::string program);

    PermissionGiver giver() const override { return PermissionGiver::counterService; }
    void openSettings() override;
    void revealProgram() override;

private:
    void send(const Bus& bus, const QDBusMessage& call);

    const Bus& sessionBus;
    const Bus& systemBus;
    std::string counterService;
    std::string program;
};

} // namespace quillbrook
