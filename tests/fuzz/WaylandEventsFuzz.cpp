#include "platform/MainLoop.h"
#include "platform/linux/session/IdleTime.h"
#include "platform/linux/wayland/CompositorIdle.h"
#include "platform/linux/wayland/CompositorOutputs.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/WlrToplevels.h"
#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzSocket.h"

#include <QCoreApplication>

#include <unistd.h>

#include <array>
#include <string>
#include <utility>

namespace quillbrook {
namespace {

constexpr std::uint32_t kDisplay = 1;
constexpr std::uint32_t kRegistry = 2;
constexpr std::uint32_t kFirstOfServer = 0xFF000000;

constexpr auto kInterfaces = std::to_array<std::string_view>(
    {"zwlr_foreign_toplevel_manager_v1", "wl_seat", "wl_output", "ext_idle_notifier_v1",
        "org_kde_kwin_idle", "zwlr_output_power_manager_v1", "org_kde_kwin_dpms_manager"});

/// Nothing is tried a second time.
class NoLater final : public MainLoop {
public:
    void repeatEvery(double, Block) override {}
    void runAfter(double, Block) override {}
    void post(Block) override {}
};

/// Notes the end of a connection.
class EndWatch final : public WaylandUser {
public:
    void offered(wl_registry&, const WaylandGlobal&) override {}
    void withdrawn(std::uint32_t) override {}
    void lost() override { isOver = true; }

    bool isOver = false;
};

std::string bytesOf(std::uint32_t number)
{
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

std::string padded(std::string bytes)
{
    bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
    return bytes;
}

std::string text(std::string_view value)
{
    return bytesOf(static_cast<std::uint32_t>(value.size() + 1))
        + padded(std::string(value) + '\0');
}

std::string array(std::string_view value)
{
    return bytesOf(static_cast<std::uint32_t>(value.size())) + padded(std::string(value));
}

std::string event(std::uint32_t object, std::uint32_t opcode, const std::string& body)
{
    const auto size = static_cast<std::uint32_t>(8 + body.size());
    return bytesOf(object) + bytesOf(size << 16 | opcode) + body;
}

/// One of the objects that the program makes, or of those that a compositor may have made.
std::uint32_t anyObject(FuzzInput& input)
{
    const std::uint32_t choice = input.byte();
    return choice < 128 ? choice % 24 : kFirstOfServer + choice % 8;
}

std::string anyGlobal(FuzzInput& input)
{
    const std::uint32_t name = input.byte() % 16;
    const std::size_t choice = input.byte() % (kInterfaces.size() + 1);
    const std::string_view interface = choice < kInterfaces.size() ? kInterfaces[choice]
                                                                   : input.take(input.byte());
    const std::uint32_t version = input.byte() % 8;
    return event(kRegistry, 0, bytesOf(name) + text(interface) + bytesOf(version));
}

std::string anyEvent(FuzzInput& input)
{
    switch (input.byte() % 10) {
    case 0:
    case 1:
        return anyGlobal(input);
    case 2:
        return event(kRegistry, 1, bytesOf(input.byte() % 16));
    case 3: { // a window
        const auto manager = anyObject(input);
        return event(manager, 0, bytesOf(kFirstOfServer + input.byte() % 8));
    }
    case 4: { // a window's title or application
        const auto window = kFirstOfServer + input.byte() % 8;
        const auto opcode = input.byte() % 2U;
        return event(window, opcode, text(input.take(input.byte())));
    }
    case 5: { // a window's states
        const auto window = kFirstOfServer + input.byte() % 8;
        return event(window, 4, array(input.take(input.byte() % 32)));
    }
    case 6: { // "done", "closed", "idled" and their like
        const auto object = anyObject(input);
        return event(object, input.byte() % 8U, {});
    }
    case 7: {
        const auto object = anyObject(input);
        const auto opcode = input.byte() % 8U;
        return event(object, opcode, bytesOf(input.byte() % 8U));
    }
    case 8:
        return event(kDisplay, 1, bytesOf(anyObject(input)));
    default:
        return std::string(input.take(input.byte()));
    }
}

} // namespace
} // namespace quillbrook

/// Whatever a compositor says, and whatever it breaks off in the middle of.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    static const FuzzApplication application;
    static const FuzzSocket socket;

    NoLater mainLoop;
    IdleTime idle([] { return 0.0; });
    WlrToplevels* front = nullptr;
    WlrToplevels toplevels([&front] {
        if (const auto window = front->front()) {
            requireValid(window->traits.applicationId);
        }
    });
    front = &toplevels;
    CompositorIdle compositorIdle(idle);
    CompositorOutputs outputs([](bool) {});
    EndWatch end;
    WaylandConnection compositor(mainLoop, socket.path());
    for (WaylandUser* user :
        std::initializer_list<WaylandUser*>{&toplevels, &compositorIdle, &outputs, &end}) {
        compositor.add(*user);
    }
    require(compositor.connect());
    const int peer = socket.accept();
    FuzzInput input(data, size);
    std::string said;
    while (!input.isEmpty()) {
        said += anyEvent(input);
    }
    socket.sayAndEnd(peer, said);
    while (!end.isOver) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    close(peer);
    return 0;
}
