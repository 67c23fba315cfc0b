#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace quillbrook {

/// Where the texts below lie.
template <const std::string_view&... pieces>
struct JoinedBytes {
    static constexpr auto kBytes = [] {
        std::array<char, (pieces.size() + ... + 0)> bytes{};
        auto end = bytes.begin();
        ((end = std::ranges::copy(pieces, end).out), ...);
        return bytes;
    }();
};

/// Constant texts joined when compiled: a constant that is made of others, in whatever file they
/// stand, is there before anything runs.
template <const std::string_view&... pieces>
inline constexpr std::string_view joined{
    JoinedBytes<pieces...>::kBytes.data(), JoinedBytes<pieces...>::kBytes.size()};

/// Where the lists below lie.
template <const auto& names>
struct QuotedBytes {
    static constexpr std::string_view kQuote = "'";
    static constexpr std::string_view kBetween = "', '";

    static constexpr std::size_t kLength = [] {
        std::size_t length = 2 * kQuote.size() + kBetween.size() * (names.size() - 1);
        for (const std::string_view name : names) {
            length += name.size();
        }
        return length;
    }();

    static constexpr auto kBytes = [] {
        std::array<char, kLength> bytes{};
        std::string_view before = kQuote;
        auto end = bytes.begin();
        for (const std::string_view name : names) {
            end = std::ranges::copy(before, end).out;
            end = std::ranges::copy(name, end).out;
            before = kBetween;
        }
        std::ranges::copy(kQuote, end);
        return bytes;
    }();
};

/// "'One', 'Two'": the names of a constant array, which hold no quotes, as SQL writes a list.
template <const auto& names>
inline constexpr std::string_view quotedList{
    QuotedBytes<names>::kBytes.data(), QuotedBytes<names>::kLength};

} // namespace quillbrook
