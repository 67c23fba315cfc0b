#pragma once

namespace quillbrook {

/// Gives memory back to the system that nothing needs while no window is open: freed blocks, and
/// the pages of font files, which the system reads again when text is next drawn. Takes some
/// milliseconds. Any thread.
void giveBackIdleMemory();

} // namespace quillbrook
