#pragma once

namespace quillbrook {

class SystemSound;

/// Sounds like a bell, as well as the desktop can: else it beeps.
void ringBell(SystemSound& sound);

} // namespace quillbrook
