#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace quillbrook {

/// A folder, and what may be written below it.
struct WritablePlace {
    enum class Kind : std::uint8_t {
        everything,
        existingFiles, ///< no new ones, as of devices
    };

    std::filesystem::path folder{};
    Kind kind = Kind::everything;
};

/// Whether the kernel has Landlock, and lets this process use it.
bool canRefuseWriting();

/// Lets the kernel refuse to the calling thread, and to all that it starts from now on, to change
/// files anywhere but in `places`, for good. Descriptors that are open stay as they are; reading
/// is free, but for what /proc has of other processes: where their links lead, and their memory. A
/// place that isn't there is left out, also when it comes later. False when it can't be done.
bool writeOnlyIn(std::span<const WritablePlace> places);

} // namespace quillbrook
