#pragma once

namespace quillbrook {

/// Takes from the process, and from all that it starts, what a recorder has no need of, by means of
/// the kernel and for good: networks, a look into other processes, deep parts of the kernel, dumps
/// of its memory. What this system can't take is one notice.
void confineThisProcess();

} // namespace quillbrook
