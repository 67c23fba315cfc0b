#include "platform/linux/bus/Fcitx5InputMethod.h"
#include "platform/linux/bus/IBusInputMethod.h"
#include "platform/linux/bus/InputMethodNames.h"
#include "platform/linux/bus/Logind.h"
#include "platform/linux/bus/PortalAppearance.h"
#include "platform/linux/gnome/GnomeInputSources.h"
#include "platform/linux/gnome/ShellExtension.h"
#include "platform/linux/gnome/ShellExtensionSwitch.h"
#include "platform/linux/shells/KdeLayout.h"
#include "platform/linux/shells/ReportedFront.h"
#include "tests/fuzz/BusPeer.h"
#include "tests/fuzz/FuzzApplication.h"
#include "tests/fuzz/FuzzInput.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <array>
#include <optional>
#include <string>

namespace quillbrook {
namespace {

// What the peers of the program say, and what might be taken for it.
constexpr auto kSignatures = std::to_array<std::string_view>(
    {"s", "a(sss)", "a(ssssssb)", "v", "a{sv}", "ssu", "sssi", "u", "(so)", "o", "a(ss)", "b", "as",
        "(ddd)", "(sa{sv}s)", "(ss)", "a{ss}", "i", "d", "(ddds)", "a{sa{sv}}", "av", "(v)", "t"});

constexpr auto kWords = std::to_array<std::string_view>({"xkb", "ibus", "us+dvorak", "libpinyin",
    "state", "rime", "keyboard-us-dvorak", "xkb:us::eng", "IBusEngineDesc"});

constexpr int kMostNested = 12;

/// Cuts the first complete type off a signature.
std::string_view takeType(std::string_view& signature)
{
    std::size_t length = 0;
    int open = 0;
    char code = 0;
    do {
        code = signature[length++];
        open += code == '(' || code == '{' ? 1 : 0;
        open -= code == ')' || code == '}' ? 1 : 0;
    } while (length < signature.size() && (open > 0 || code == 'a'));
    const auto type = signature.substr(0, length);
    signature.remove_prefix(length);
    return type;
}

std::string anyText(FuzzInput& input)
{
    const std::size_t choice = input.byte();
    if (choice >= 128) {
        return std::string(kWords[choice % kWords.size()]);
    }
    std::string text = validUtf8(input.take(choice));
    std::erase(text, '\0');
    return text;
}

/// Puts values out of an input into a message. False when it can't hold them.
class Filling {
public:
    Filling(sd_bus_message* message, FuzzInput& input) : message(message), input(input) {}

    bool append(std::string_view signature, int depth = 0)
    {
        while (!signature.empty()) {
            if (!appendOne(takeType(signature), depth)) {
                return false;
            }
        }
        return true;
    }

private:
    bool appendOne(std::string_view type, int depth)
    {
        switch (type.front()) {
        case 'a':
            return depth < kMostNested && appendAll('a', type.substr(1), input.byte() % 4, depth);
        case '(':
            return depth < kMostNested && appendAll('r', type.substr(1, type.size() - 2), 1, depth);
        case '{':
            return depth < kMostNested && appendAll('e', type.substr(1, type.size() - 2), 1, depth);
        case 'v':
            return depth < kMostNested
                && appendAll('v', kSignatures[input.byte() % kSignatures.size()], 1, depth);
        case 's':
            return sd_bus_message_append_basic(message, 's', anyText(input).c_str()) >= 0;
        case 'o':
            return sd_bus_message_append_basic(message, 'o', "/a/b") >= 0;
        case 'b': {
            const int value = input.byte() % 2;
            return sd_bus_message_append_basic(message, 'b', &value) >= 0;
        }
        default: {
            const auto value = input.number<std::uint64_t>(); // of which it takes what it needs
            return sd_bus_message_append_basic(message, type.front(), &value) >= 0;
        }
        }
    }

    bool appendAll(char kind, std::string_view contents, int count, int depth)
    {
        const std::string signature(contents);
        if (sd_bus_message_open_container(message, kind, signature.c_str()) < 0) {
            return false;
        }
        for (int i = 0; i < count; ++i) {
            if (!append(contents, depth + 1)) {
                return false;
            }
        }
        return sd_bus_message_close_container(message) >= 0;
    }

    sd_bus_message* message;
    FuzzInput& input;
};

void check(const std::optional<FrontWindow>& window)
{
    if (window) {
        requireValid(window->traits.applicationId);
        requireValid(window->traits.className);
        requireValid(window->traits.instance);
    }
}

void checkValue(const QVariant& value)
{
    requireValid(ibusIdentifier(ibusEngineIn(value).toStdString()));
    sessionPathIn(value);
    accentColorIn(value);
    if (const auto source = firstInputSourceIn(value)) {
        requireValid(*source);
    }
    value.toBool();
    value.toInt();
    value.toUInt();
    value.value<QDBusObjectPath>().path();
    requireValid(value.toString().toStdString());
}

void check(const QDBusMessage& message)
{
    const auto names = fcitx5NamesIn(message);
    for (auto name = names.begin(); name != names.end(); ++name) {
        requireValid(fcitxIdentifier(
            name.key().toStdString(), name->name.toStdString(), name->nativeName.toStdString()));
    }
    for (const QString& description : layoutDescriptionsIn(message)) {
        requireValid(description.toStdString());
    }
    extensionFactsIn(message).value(QStringLiteral("state")).toInt();

    const QVariantList arguments = message.arguments();
    if (message.signature() == QLatin1String("ssu")) {
        check(toldWindow(arguments));
    } else if (message.signature() == QLatin1String("sssi")) {
        check(reportedWindow(arguments[0].toString(), arguments[1].toString(),
            arguments[2].toString(), arguments[3].toInt()));
    }
    const QVariant first = arguments.value(0);
    checkValue(first);
    checkValue(first.value<QDBusVariant>().variant());
}

} // namespace
} // namespace quillbrook

/// Whatever a peer on a bus answers, calls or tells, what is taken out of it is sound.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillbrook;
    static const FuzzApplication application;
    static BusPeer peer;

    FuzzInput input(data, size);
    const std::string_view signature = kSignatures[input.byte() % kSignatures.size()];
    const auto message = peer.newMessage();
    if (Filling(message.get(), input).append(signature)) {
        check(peer.deliver(message.get()));
    }
    return 0;
}
