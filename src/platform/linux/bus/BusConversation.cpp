#include "platform/linux/bus/BusConversation.h"

#include <unistd.h>

#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <vector>

namespace quillbrook {

namespace {

constexpr std::size_t kHeaderSize = 16;
constexpr std::uint32_t kMaxPartSize = 64 * 1024;
constexpr int kMaxOtherMessages = 8; // signals that come before an answer
constexpr std::size_t kGuidSize = 32;

constexpr char kOurByteOrder = std::endian::native == std::endian::little ? 'l' : 'B';
constexpr char kMethodCall = 1;
constexpr char kMethodReturn = 2;
constexpr char kNoAutoStart = 2;
constexpr char kVersion = 1;

enum Field : char {
    path = 1,
    interface = 2,
    member = 3,
    replySerial = 5,
    destination = 6,
    signature = 8
};

constexpr BusCall kHello{.service = "org.freedesktop.DBus",
    .path = "/org/freedesktop/DBus",
    .interface = "org.freedesktop.DBus",
    .member = "Hello"};

constexpr std::size_t aligned(std::size_t size, std::size_t alignment)
{
    return (size + alignment - 1) / alignment * alignment;
}

void append(std::string& bytes, std::uint32_t number)
{
    std::array<char, sizeof number> raw{};
    std::memcpy(raw.data(), &number, sizeof number);
    bytes.resize(aligned(bytes.size(), sizeof number));
    bytes.append(raw.data(), raw.size());
}

void appendField(std::string& bytes, Field field, char type, std::string_view text)
{
    bytes.resize(aligned(bytes.size(), 8));
    bytes += {field, 1, type, '\0'};
    append(bytes, static_cast<std::uint32_t>(text.size()));
    bytes.append(text);
    bytes += '\0';
}

std::string methodCall(std::uint32_t serial, const BusCall& call)
{
    std::string fields;
    appendField(fields, Field::path, 'o', call.path);
    appendField(fields, Field::interface, 's', call.interface);
    appendField(fields, Field::member, 's', call.member);
    appendField(fields, Field::destination, 's', call.service);

    std::string message{kOurByteOrder, kMethodCall, kNoAutoStart, kVersion};
    append(message, 0); // the size of the body
    append(message, serial);
    append(message, static_cast<std::uint32_t>(fields.size()));
    message += fields;
    message.resize(aligned(message.size(), 8));
    return message;
}

/// Reads what a message holds, and nothing beyond its end.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes(bytes) {}

    bool isAtEnd() const { return position >= bytes.size(); }

    void align(std::size_t alignment) { position = aligned(position, alignment); }

    std::string_view take(std::size_t count)
    {
        if (position > bytes.size() || bytes.size() - position < count) {
            position = bytes.size();
            return {};
        }
        const auto part = bytes.substr(position, count);
        position += count;
        return part;
    }

    char takeByte()
    {
        const auto part = take(1);
        return part.empty() ? '\0' : part.front();
    }

    std::uint32_t takeNumber()
    {
        align(sizeof(std::uint32_t));
        std::uint32_t number = 0;
        if (const auto part = take(sizeof number); !part.empty()) {
            std::memcpy(&number, part.data(), part.size());
        }
        return number;
    }

    std::string_view takeText(std::size_t size)
    {
        const auto text = take(size);
        take(1); // the end mark
        return text;
    }

private:
    std::string_view bytes;
    std::size_t position = 0;
};

/// A value of an address, with each "%20" and its like as the character that it stands for.
std::string decoded(std::string_view value)
{
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        unsigned char code = 0;
        const char* digits = value.data() + i + 1;
        if (value[i] == '%' && value.size() - i > 2
            && std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            text += static_cast<char>(code);
            i += 2;
        } else {
            text += value[i];
        }
    }
    return text;
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    while (true) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

/// "30" for each 0 and so on: the login takes the number of the user so.
std::string hexOfDigits(const std::string& digits)
{
    std::string hex;
    for (const char digit : digits) {
        hex += {'3', digit};
    }
    return hex;
}

} // namespace

BusConversation::BusConversation(std::string_view address)
{
    constexpr std::string_view kUnix = "unix:";
    for (std::string_view entry : split(address, ';')) {
        if (!entry.starts_with(kUnix)) {
            continue;
        }
        entry.remove_prefix(kUnix.size());
        for (const std::string_view pair : split(entry, ',')) {
            const auto sign = pair.find('=');
            const auto key = pair.substr(0, sign);
            const bool isAbstract = key == "abstract";
            if (sign == std::string_view::npos || (!isAbstract && key != "path")) {
                continue;
            }
            wasRefused = !socket.connectTo(decoded(pair.substr(sign + 1)), isAbstract)
                && !socket.isKeptWaiting();
            if (!wasRefused) {
                hasEntered = logIn();
                return;
            }
        }
    }
}

bool BusConversation::logIn()
{
    using namespace std::string_literals;
    constexpr std::string_view kAccepted = "OK ";
    const std::string user = hexOfDigits(std::to_string(getuid()));
    if (!socket.send("\0AUTH EXTERNAL "s + user + "\r\n")
        || socket.receive(kAccepted.size()) != kAccepted || !socket.receive(kGuidSize + 2)
        || !socket.send("BEGIN\r\n")) {
        return false;
    }
    hasEntered = true;
    return answerTo(kHello).has_value();
}

std::optional<std::string> BusConversation::answerTo(const BusCall& call)
{
    if (!hasEntered || !socket.send(methodCall(++lastSerial, call))) {
        return std::nullopt;
    }
    for (int i = 0; i <= kMaxOtherMessages; ++i) {
        const auto message = nextMessage();
        if (!message) {
            return std::nullopt;
        }
        if (message->repliesTo == lastSerial) {
            if (!message->isReturn || !message->beginsWithText) {
                return std::string();
            }
            Reader body(message->body);
            const auto size = body.takeNumber();
            return std::string(body.takeText(size));
        }
    }
    return std::nullopt;
}

std::optional<BusConversation::Message> BusConversation::nextMessage() const
{
    const auto header = socket.receive(kHeaderSize);
    if (!header || header->front() != kOurByteOrder) {
        return std::nullopt;
    }
    Reader numbers(std::string_view(*header).substr(4));
    const auto bodySize = numbers.takeNumber();
    numbers.takeNumber(); // its serial
    const auto fieldsSize = numbers.takeNumber();
    if (bodySize > kMaxPartSize || fieldsSize > kMaxPartSize) {
        return std::nullopt;
    }
    const auto rest = socket.receive(aligned(fieldsSize, 8) + bodySize);
    if (!rest) {
        return std::nullopt;
    }
    Message message{
        .isReturn = (*header)[1] == kMethodReturn, .body = rest->substr(aligned(fieldsSize, 8))};
    Reader fields(std::string_view(*rest).substr(0, fieldsSize));
    while (!fields.isAtEnd()) {
        fields.align(8);
        const char code = fields.takeByte();
        const auto type = fields.takeText(static_cast<unsigned char>(fields.takeByte()));
        if (type == "u") {
            const auto number = fields.takeNumber();
            message.repliesTo = code == Field::replySerial ? number : message.repliesTo;
        } else if (type == "g") {
            const auto text = fields.takeText(static_cast<unsigned char>(fields.takeByte()));
            message.beginsWithText = code == Field::signature && text.starts_with('s');
        } else {
            const auto size = fields.takeNumber();
            fields.takeText(size);
        }
    }
    return message;
}

} // namespace quillbrook
