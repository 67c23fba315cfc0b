#pragma once

namespace quillbrook {

/// Lets the kernel never write this process's memory to a file or hand it to a crash service: what
/// was done when is in it. Other programs of the user see no less of the process than before.
void forbidCoreDumps();

} // namespace quillbrook
