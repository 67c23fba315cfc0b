#pragma once

#include <atomic>
#include <cstdint>

namespace quillbrook {

/// How a disk misbehaves whose calls are answered by `DiskFaults.cpp`: for files below one folder,
/// calls that write, keep or map fail at random or write less than they were told, as on a disk
/// that is full, over its quota or broken.
struct DiskFaults {
    std::atomic<std::uint32_t> perMille; // of the calls fail; 0: none
    std::atomic<std::uint32_t> seed; // equal seeds and equal calls give equal faults
    std::atomic<std::uint32_t> calls; // that could have failed
    std::atomic<std::uint32_t> faults; // that did
};

/// The faults of this process. Where $DISK_FAULTS names a file they lie in it, so that they can be
/// switched from outside.
DiskFaults& diskFaults();

/// Whose files they meet, links resolved. From $DISK_FAULTS_FOLDER unless set here.
void setDiskFaultsFolder(const char* folder);

} // namespace quillbrook
