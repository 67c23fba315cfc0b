#include "platform/linux/x11/X11HumanInput.h"

#include "platform/linux/words/Notice.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XcbReply.h"

#include <xcb/screensaver.h>
#include <xcb/sync.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace quillbrook {

namespace {

/// The number of the counter "IDLETIME" in the server's list; 0 when there is none.
xcb_sync_counter_t idleCounterIn(const xcb_sync_list_system_counters_reply_t& reply)
{
    // The list is walked by hand: libxcb takes the 14 bytes before each name for 16.
    constexpr std::size_t kBytesBeforeName = 14;
    constexpr std::size_t kBytesBeforeLength = 12;
    std::string_view rest(reinterpret_cast<const char*>(&reply + 1), reply.length * std::size_t{4});
    for (std::uint32_t i = 0; i < reply.counters_len && rest.size() >= kBytesBeforeName; ++i) {
        xcb_sync_counter_t counter = 0;
        std::uint16_t nameLength = 0;
        std::memcpy(&counter, rest.data(), sizeof counter);
        std::memcpy(&nameLength, rest.data() + kBytesBeforeLength, sizeof nameLength);
        if (rest.substr(kBytesBeforeName, nameLength) == "IDLETIME") {
            return counter;
        }
        const std::size_t whole = (kBytesBeforeName + nameLength + 3) / 4 * 4;
        rest.remove_prefix(std::min(whole, rest.size()));
    }
    return 0;
}

xcb_sync_counter_t idleCounterOf(X11Connection& x11)
{
    if (!x11.has(xcb_sync_id)) {
        return 0;
    }
    const auto versionCookie = xcb_sync_initialize(x11.get(), 3, 0);
    const auto listCookie = xcb_sync_list_system_counters(x11.get());
    const XcbReply<xcb_sync_initialize_reply_t> version(
        xcb_sync_initialize_reply(x11.get(), versionCookie, nullptr));
    const XcbReply<xcb_sync_list_system_counters_reply_t> list(
        xcb_sync_list_system_counters_reply(x11.get(), listCookie, nullptr));
    x11.drain();
    return version && list ? idleCounterIn(*list) : 0;
}

} // namespace

X11HumanInput::X11HumanInput(X11Connection& x11)
    : x11(x11)
    , hasSaver(x11.has(xcb_screensaver_id))
    , idleCounter(hasSaver ? 0 : idleCounterOf(x11))
{
    if (x11.isUsable() && !hasSaver && idleCounter == 0) {
        notice("X 服务器没有 MIT-SCREEN-SAVER 扩展，无法得知闲置时间");
    }
}

double X11HumanInput::secondsSinceLastInput() const
{
    if (!x11.isUsable()) {
        return 0;
    }
    return hasSaver ? secondsOfSaver() : secondsOfCounter();
}

double X11HumanInput::secondsOfSaver() const
{
    const auto cookie = xcb_screensaver_query_info(x11.get(), x11.root());
    const XcbReply<xcb_screensaver_query_info_reply_t> reply(
        xcb_screensaver_query_info_reply(x11.get(), cookie, nullptr));
    x11.drain();
    return reply ? reply->ms_since_user_input / 1000.0 : 0;
}

double X11HumanInput::secondsOfCounter() const
{
    if (idleCounter == 0) {
        return 0;
    }
    const auto cookie = xcb_sync_query_counter(x11.get(), idleCounter);
    const XcbReply<xcb_sync_query_counter_reply_t> reply(
        xcb_sync_query_counter_reply(x11.get(), cookie, nullptr));
    x11.drain();
    if (!reply) {
        return 0;
    }
    constexpr double kMillisecondsOfHigh = 4294967296.0;
    const double milliseconds
        = reply->counter_value.hi * kMillisecondsOfHigh + reply->counter_value.lo;
    return std::max(milliseconds / 1000, 0.0);
}

} // namespace quillbrook
