#pragma once

namespace quillbrook {

/// Takes from the process, and from all that it starts, what a recorder has no need of, by means of
/// the kernel and for good: networks, a look into other processes, deep parts of the kernel, dumps
/// of its memory. What this system can't take is one notice.
void confineThisProcess();

/// Lets the kernel refuse to the calling thread, and to all that it starts, to write anywhere but
/// in the data directory, which is made when it is missing. A thread that is older than that, and
/// so free, is started for what else has to be written, and for what the rule takes besides: see
/// `onOlderThread`. Without that in the kernel it is one notice. Before any other thread.
void confineWriting();

/// Removes the data directory if this start has made it and nothing is in it, as a start that fails
/// leaves nothing behind.
void leaveNoEmptyDirectory();

} // namespace quillbrook
