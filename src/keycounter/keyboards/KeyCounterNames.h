#pragma once

namespace quillbrook {

/// How the service that counts keys is addressed on the system bus.
struct KeyCounterNames {
    static constexpr const char* kService = "cn.tarnlow.quillbrook.KeyCounter";
    static constexpr const char* kPath = "/cn/tarnlow/quillbrook/KeyCounter";
    static constexpr const char* kInterface = "cn.tarnlow.quillbrook.KeyCounter1";
    static constexpr const char* kSubscribe = "Subscribe"; // from now on; refused without a seat
    static constexpr const char* kUnsubscribe = "Unsubscribe";
    static constexpr const char* kKeysPressed = "KeysPressed"; // signal, u: keys of one second
};

} // namespace quillbrook
